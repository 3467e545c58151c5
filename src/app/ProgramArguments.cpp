// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ProgramArguments.h"

#include "settings/FilePaths.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <optional>
#include <sys/stat.h>

namespace {

class Text {
    Q_DECLARE_TR_FUNCTIONS(main)
};

QString defaultSettings() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/velm/velm.conf");
}

QString defaultMemory() {
    return stateFolder() + QStringLiteral("/state.conf");
}

/// Options that the toolkit and its platform plugins take out of the arguments themselves, but
/// only once there is a display.
QList<QCommandLineOption> toolkitOptions() {
    QList<QCommandLineOption> options;
    const auto add = [&options](const char *name, const QString &valueName) {
        QCommandLineOption option(QLatin1String(name), QString(), valueName);
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        options.append(option);
    };
    for (const char *name :
         {"platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry",
          "qwindowicon", "qwindowtitle", "geometry", "icon", "title", "session", "style",
          "stylesheet", "display", "name", "qmljsdebugger"})
        add(name, QStringLiteral("value"));
    for (const char *name : {"reverse", "widgetcount", "nograb", "dograb"})
        add(name, QString());
    return options;
}

bool isSomethingElseThanAFile(const QString &path) {
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 && !S_ISREG(facts.st_mode);
}

/// Why the file named by \a option cannot hold anything, if so: opening a FIFO waits for ever, and
/// a device forgets.
std::optional<ProgramRefusal> refusalOf(const QCommandLineParser &parser,
                                        const QCommandLineOption &option) {
    const QString path = QDir().absoluteFilePath(parser.value(option));
    if (!parser.isSet(option) || !isSomethingElseThanAFile(path))
        return std::nullopt;
    return ProgramRefusal{
        Text::tr("--%1: %2 is not a regular file.").arg(option.names().constFirst(), path)};
}

} // namespace

ProgramArguments readArguments(const QStringList &words) {
    const QCommandLineOption settings(QStringLiteral("settings"),
                                      Text::tr("Keep the settings in <file>."),
                                      QStringLiteral("file"), defaultSettings());
    const QCommandLineOption state(QStringLiteral("state"),
                                   Text::tr("Keep what the window remembers in <file>."),
                                   QStringLiteral("file"), defaultMemory());
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  Text::tr("Print the options and end."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     Text::tr("Print the version and end."));
    QCommandLineParser parser;
    parser.setApplicationDescription(Text::tr("Read, write and test chips with the minipro tool."));
    // The toolkit's options have one dash.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({settings, state, help, version});
    parser.addOptions(toolkitOptions());
    parser.addPositionalArgument(QStringLiteral("file"), Text::tr("The binary to open."),
                                 QStringLiteral("[file]"));

    if (!parser.parse(words))
        return ProgramRefusal{parser.errorText()};
    if (parser.isSet(help))
        return ProgramAnswer{parser.helpText()};
    if (parser.isSet(version))
        return ProgramAnswer{QCoreApplication::applicationName() + u' ' +
                             QCoreApplication::applicationVersion() + u'\n'};
    for (const QCommandLineOption &option : {settings, state})
        if (const auto refusal = refusalOf(parser, option))
            return *refusal;
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        return ProgramRefusal{Text::tr("Only one file can be opened.")};
    if (files.contains(QString()))
        return ProgramRefusal{Text::tr("The name of the file to open is empty.")};
    const QDir here;
    return ProgramOptions{here.absoluteFilePath(parser.value(settings)),
                          here.absoluteFilePath(parser.value(state)),
                          files.isEmpty() ? QString() : here.absoluteFilePath(files.constFirst())};
}
