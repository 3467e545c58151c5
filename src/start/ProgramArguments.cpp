// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/ProgramArguments.h"

#include "settings/FilePaths.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

class Text {
    Q_DECLARE_TR_FUNCTIONS(main)
};

QString defaultSettings() {
    return configFolder() + QStringLiteral("/velm.conf");
}

QString defaultMemory() {
    return stateFolder() + QStringLiteral("/state.conf");
}

/// The options of the program itself.
struct OwnOptions {
    QCommandLineOption settings{QStringLiteral("settings"),
                                Text::tr("Keep the settings in <file>."), QStringLiteral("file"),
                                defaultSettings()};
    QCommandLineOption state{QStringLiteral("state"),
                             Text::tr("Keep what the window remembers in <file>."),
                             QStringLiteral("file"), defaultMemory()};
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            Text::tr("Print the options and end.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               Text::tr("Print the version and end.")};
};

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

/// Tells \a parser all that may stand behind the name of the program.
void teach(QCommandLineParser &parser, const OwnOptions &options) {
    parser.setApplicationDescription(Text::tr("Read, write and test chips with the minipro tool."));
    // The toolkit's options have one dash.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({options.settings, options.state, options.help, options.version});
    parser.addOptions(toolkitOptions());
    parser.addPositionalArgument(QStringLiteral("file"), Text::tr("The binary to open."),
                                 QStringLiteral("[file]"));
}

bool isSomethingElseThanAFile(const QString &path) {
    const QFileInfo file(path);
    return file.exists() && !file.isFile();
}

/// Whether the file named by \a option can hold anything: opening a FIFO waits for ever, and a
/// device forgets.
Result<void, ProgramRefusal> canBeKept(const QCommandLineParser &parser,
                                       const QCommandLineOption &option) {
    const QString path = QDir().absoluteFilePath(parser.value(option));
    if (!parser.isSet(option) || !isSomethingElseThanAFile(path))
        return {};
    return ProgramRefusal{
        Text::tr("--%1: %2 is not a regular file.").arg(option.names().constFirst(), path)};
}

/// Whether the program can start with what \a parser has read.
Result<void, ProgramRefusal> canStart(const QCommandLineParser &parser, const OwnOptions &options) {
    for (const QCommandLineOption &option : {options.settings, options.state})
        if (const auto kept = canBeKept(parser, option); !kept)
            return kept;
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        return ProgramRefusal{Text::tr("Only one file can be opened.")};
    if (files.contains(QString()))
        return ProgramRefusal{Text::tr("The name of the file to open is empty.")};
    return {};
}

QString nameAndVersion() {
    return QCoreApplication::applicationName() + u' ' + QCoreApplication::applicationVersion() +
           u'\n';
}

} // namespace

Result<ProgramRequest, ProgramRefusal> readArguments(const QStringList &words) {
    const OwnOptions options;
    QCommandLineParser parser;
    teach(parser, options);
    if (!parser.parse(words))
        return ProgramRefusal{parser.errorText()};
    if (parser.isSet(options.help))
        return ProgramRequest(ProgramAnswer{parser.helpText()});
    if (parser.isSet(options.version))
        return ProgramRequest(ProgramAnswer{nameAndVersion()});
    const auto started = canStart(parser, options);
    if (const ProgramRefusal *refusal = started.failure())
        return *refusal;
    const QStringList files = parser.positionalArguments();
    const QDir here;
    return ProgramRequest(
        ProgramOptions{here.absoluteFilePath(parser.value(options.settings)),
                       here.absoluteFilePath(parser.value(options.state)),
                       files.isEmpty() ? QString() : here.absoluteFilePath(files.constFirst())});
}
