// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Shows the program at work where nobody sits in front of it: presses the window's buttons, says
// what came of it and leaves a picture.

#include "base/Log.h"
#include "control/FilePanels.h"
#include "demo/Demonstration.h"
#include "demo/Pictures.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPalette>

#include <cstdio>
#include <cstdlib>

namespace {

/// The log of a demonstration: what the program traces is not what somebody came to see.
class QuietLog final : public Log {
public:
    void write(const QString &) override {}
};

/// A dark theme as desktops have it.
QPalette darkTheme() {
    const QColor window(0x2d, 0x2d, 0x2d);
    const QColor base(0x1e, 0x1e, 0x1e);
    const QColor text(0xe6, 0xe6, 0xe6);
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, base.lighter(125));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa7));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, text.darker(190));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, text.darker(190));
    return palette;
}

} // namespace

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reads, composes, writes and verifies in VELM's real window."));
    parser.addHelpOption();
    const QCommandLineOption settingsOption(
        QStringLiteral("settings"), QStringLiteral("Settings file."), QStringLiteral("file"));
    const QCommandLineOption stateOption(QStringLiteral("state"), QStringLiteral("State file."),
                                         QStringLiteral("file"));
    const QCommandLineOption pictureOption(QStringLiteral("screenshot"),
                                           QStringLiteral("Where the picture goes (PNG)."),
                                           QStringLiteral("file"));
    const QCommandLineOption guideOption(QStringLiteral("pictures"),
                                         QStringLiteral("Make the guide's pictures there."),
                                         QStringLiteral("folder"));
    const QCommandLineOption darkOption(QStringLiteral("dark"),
                                        QStringLiteral("Show everything in a dark theme."));
    parser.addOptions({settingsOption, stateOption, pictureOption, guideOption, darkOption});
    parser.process(application);
    if (parser.isSet(darkOption))
        QApplication::setPalette(darkTheme());

    QuietLog log;
    SettingsStore settings(parser.value(settingsOption));
    DesktopFilePanels panels;
    VelmWindow velm({settings, log, panels, [] {}, parser.value(stateOption)});
    velm.start();
    if (parser.isSet(guideOption))
        return makePictures(velm, parser.value(guideOption)) ? EXIT_SUCCESS : EXIT_FAILURE;
    Demonstration demonstration(velm);
    bool good = demonstration.readComposeWriteVerify();
    const QString picture = parser.value(pictureOption);
    if (!picture.isEmpty() && !demonstration.savePicture(picture)) {
        std::fprintf(stderr, "The picture cannot be written to %s.\n", qPrintable(picture));
        good = false;
    }
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
