// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "structure/BuildRules.h"
#include "structure/IncludeRules.h"
#include "structure/LayerRules.h"
#include "structure/SourceTree.h"
#include "structure/TextRules.h"

#include <QTest>

/// The project's own sources keep its rules, and each rule notices what it forbids.
class TestLayers : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void sourcesKeepTheRule_data();
    void sourcesKeepTheRule();
    void ruleNotices_data();
    void ruleNotices();
    void commentsAreBlanked_data();
    void commentsAreBlanked();

private:
    SourceTree sources;
};

using Rule = QStringList (*)(const SourceTree &);
Q_DECLARE_METATYPE(Rule)

void TestLayers::initTestCase() {
    static const QString entries = QStringLiteral(
        "src simulator tests demo bench fuzz packaging docs cmake .ci CMakeLists.txt run test");
    sources = readSourceTree(QStringLiteral(VELM_SOURCE_DIR), entries.split(u' '));
    QVERIFY(sources.contains(QStringLiteral("src/base/Log.h")));
    QVERIFY(sources.contains(QStringLiteral("simulator/CMakeLists.txt")));
    QVERIFY(sources.contains(QStringLiteral(".ci/run")));
    QVERIFY(sources.contains(QStringLiteral("test")));
}

void TestLayers::sourcesKeepTheRule_data() {
    QTest::addColumn<Rule>("rule");
    QTest::newRow("arrows point down") << Rule(layerRules::arrowsPointDown);
    QTest::newRow("arrows are used") << Rule(layerRules::arrowsAreUsed);
    QTest::newRow("libraries link down") << Rule(layerRules::librariesLinkDown);
    QTest::newRow("libraries link what they include")
        << Rule(layerRules::librariesLinkWhatTheyInclude);
    QTest::newRow("includes name their folder") << Rule(layerRules::includesNameTheirFolder);
    QTest::newRow("pure folders see no graphics") << Rule(layerRules::pureFoldersSeeNoGraphics);
    QTest::newRow("pure folders link Core alone") << Rule(layerRules::pureFoldersLinkCoreAlone);
    QTest::newRow("grid rules see no widgets") << Rule(layerRules::gridRulesSeeNoWidgets);
    QTest::newRow("controller is unknown below") << Rule(layerRules::controllerIsUnknownBelow);
    QTest::newRow("simulator stands alone") << Rule(layerRules::simulatorStandsAlone);
    QTest::newRow("programs point down") << Rule(layerRules::programsPointDown);
    QTest::newRow("links are used") << Rule(buildRules::linksAreUsed);
    QTest::newRow("standard names have their header")
        << Rule(includeRules::standardNamesHaveTheirHeader);
    QTest::newRow("named classes are reached") << Rule(includeRules::namedClassesAreReached);
    QTest::newRow("standard headers are used") << Rule(includeRules::standardHeadersAreUsed);
    QTest::newRow("own headers are used") << Rule(includeRules::ownHeadersAreUsed);
    QTest::newRow("colours stand in the palette helper")
        << Rule(textRules::coloursStandInThePaletteHelper);
    QTest::newRow("nothing forks") << Rule(textRules::nothingForks);
    QTest::newRow("descriptors have one owner") << Rule(textRules::descriptorsHaveOneOwner);
    QTest::newRow("numbers and times have one form") << Rule(textRules::numbersAndTimesHaveOneForm);
    QTest::newRow("texts have one form") << Rule(textRules::textsHaveOneForm);
    QTest::newRow("files are short") << Rule(textRules::filesAreShort);
    QTest::newRow("files name their licence") << Rule(textRules::filesNameTheirLicence);
}

void TestLayers::sourcesKeepTheRule() {
    QFETCH(Rule, rule);
    const QString breaches = rule(sources).join(u'\n');
    QVERIFY2(breaches.isEmpty(), qPrintable(breaches));
}

void TestLayers::ruleNotices_data() {
    QTest::addColumn<Rule>("rule");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("breaches");

    const auto row = [](const char *name, Rule rule, const char *path, const char *text,
                        const char *breaches) {
        QTest::newRow(name) << rule << QString::fromLatin1(path) << QString::fromLatin1(text)
                            << QString::fromLatin1(breaches);
    };

    const Rule down = layerRules::arrowsPointDown;
    row("base includes settings", down, "src/base/A.h", "#include \"settings/FilePaths.h\"\n",
        "src/base/A.h: includes settings/FilePaths.h");
    row("settings includes image", down, "src/settings/A.h", "#include \"image/DisplayText.h\"\n",
        "src/settings/A.h: includes image/DisplayText.h");
    row("files includes settings", down, "src/files/A.h", "#include \"settings/FilePaths.h\"\n",
        "src/files/A.h: includes settings/FilePaths.h");
    row("image includes tool", down, "src/image/A.cpp", "  #  include \"tool/Console.h\"\n",
        "src/image/A.cpp: includes tool/Console.h");
    row("tool includes image", down, "src/tool/A.cpp", "#include \"image/DisplayText.h\"\n",
        "src/tool/A.cpp: includes image/DisplayText.h");
    row("widgets includes the console's interface", down, "src/widgets/A.h",
        "#include \"tool/Console.h\"\n", "");
    row("widgets includes the tool run", down, "src/widgets/A.h",
        "#include \"tool/ScriptedMiniPro.h\"\n",
        "src/widgets/A.h: includes tool/ScriptedMiniPro.h");
    row("grid includes tool", down, "src/grid/A.h", "#include \"tool/Console.h\"\n",
        "src/grid/A.h: includes tool/Console.h");
    row("devices includes grid", down, "src/devices/A.h", "#include \"grid/GridModel.h\"\n",
        "src/devices/A.h: includes grid/GridModel.h");
    row("every folder includes itself, app everything", down, "src/app/A.h",
        "#include \"app/B.h\"\n#include \"grid/C.h\"\n#include \"devices/D.h\"\n", "");
    row("the tool's language includes a process", down, "src/language/A.h",
        "#include \"process/Pipe.h\"\n", "src/language/A.h: includes process/Pipe.h");
    row("a process includes the tool", down, "src/process/A.h", "#include \"tool/Console.h\"\n",
        "src/process/A.h: includes tool/Console.h");
    row("control includes app", down, "src/control/A.h", "#include \"app/MainWindow.h\"\n",
        "src/control/A.h: includes app/MainWindow.h");
    row("an include in a comment", down, "src/base/A.h", "// #include \"app/B.h\"\n", "");
    row("a way up by dots", down, "src/base/A.h", "#include \"../app/B.h\"\n",
        "src/base/A.h: includes ../app/B.h");

    row("an arrow without an include", layerRules::arrowsAreUsed, "src/settings/A.h",
        "#include \"base/Log.h\"\n", "src/settings: includes nothing of files");

    row("image links widgets", layerRules::librariesLinkDown, "src/image/CMakeLists.txt",
        "velm_library(image SOURCES A.cpp LINKS velm_base velm_widgets)\n",
        "src/image/CMakeLists.txt: links velm_widgets");
    row("widgets links the tool for its console", layerRules::librariesLinkDown,
        "src/widgets/CMakeLists.txt", "velm_library(widgets LINKS velm_settings velm_tool)\n",
        "src/widgets/CMakeLists.txt: links velm_tool");

    const Rule linked = layerRules::librariesLinkWhatTheyInclude;
    row("a folder links what its window includes", linked, "src/form/CMakeLists.txt",
        "velm_library(form LINKS velm_helper velm_grid)\n", "");
    row("a folder includes what another one links", linked, "src/form/CMakeLists.txt",
        "velm_library(form LINKS velm_grid)\n", "src/form/CMakeLists.txt: links no velm_helper");
    row("a folder includes itself", linked, "src/helper/CMakeLists.txt",
        "velm_library(helper LINKS Qt6::Widgets)\n", "");

    row("an include without folder", layerRules::includesNameTheirFolder, "src/grid/A.cpp",
        "#include \"B.h\"\n#include \"ui_A.h\"\n#include \"A.moc\"\n",
        "src/grid/A.cpp: includes B.h");

    const Rule pure = layerRules::pureFoldersSeeNoGraphics;
    row("image includes QColor", pure, "src/image/A.h", "#include <QColor>\n",
        "src/image/A.h: includes QColor");
    row("tool includes a widget by module", pure, "src/tool/A.h", "#include <QtWidgets/QLabel>\n",
        "src/tool/A.h: includes QtWidgets/QLabel");
    row("settings includes QString", pure, "src/settings/A.h", "#include <QString>\n", "");
    row("widgets includes QWidget", pure, "src/widgets/A.h", "#include <QWidget>\n", "");
    row("tool links Widgets", layerRules::pureFoldersLinkCoreAlone, "src/tool/CMakeLists.txt",
        "velm_library(tool LINKS Qt6::Core Qt6::Widgets) # Qt6::Gui\n",
        "src/tool/CMakeLists.txt: links Qt6::Widgets");

    const Rule grid = layerRules::gridRulesSeeNoWidgets;
    row("the grid's model includes a widget", grid, "src/grid/GridModel.cpp",
        "#include <QTableView>\n", "src/grid/GridModel.cpp: reaches QTableView");
    row("a cell rule reaches a widget through a header", grid, "src/grid/CellEdit.h",
        "#include \"helper/ShowsALabel.h\"\n", "src/grid/CellEdit.h: reaches QLabel");
    row("the grid's view includes a widget", grid, "src/grid/GridView.h", "#include <QTableView>\n",
        "");

    row("grid mentions the controller", layerRules::controllerIsUnknownBelow, "src/grid/A.h",
        "class AppDelegate;\n", "src/grid/A.h: mentions AppDelegate");
    row("app mentions the controller", layerRules::controllerIsUnknownBelow, "src/app/A.h",
        "class AppDelegate;\n", "");
    row("the controller mentions itself", layerRules::controllerIsUnknownBelow, "src/control/A.h",
        "class AppDelegate;\n", "");
    row("the simulator includes the toolkit", layerRules::simulatorStandsAlone, "simulator/a.cpp",
        "#include <QString>\n#include <string>\n", "simulator/a.cpp: includes QString");
    row("the simulator includes a folder of the program", layerRules::simulatorStandsAlone,
        "simulator/a.cpp", "#include \"files/FileLoading.h\"\n",
        "simulator/a.cpp: includes files/FileLoading.h");
    row("the simulator links the toolkit", layerRules::simulatorStandsAlone,
        "simulator/CMakeLists.txt", "target_link_libraries(minipro-sim PRIVATE Qt6::Core)\n",
        "simulator/CMakeLists.txt: links Qt6::Core");

    const Rule program = layerRules::programsPointDown;
    row("the simulator's parts include a session", program, "simulator/parts/A.h",
        "#include \"setup/B.h\"\n#include \"files/B.h\"\n#include \"session/B.h\"\n",
        "simulator/parts/A.h: includes session/B.h");
    row("the simulator's setup includes files", program, "simulator/setup/A.cpp",
        "#include \"setup/A.h\"\n#include \"../files/B.h\"\n",
        "simulator/setup/A.cpp: includes ../files/B.h");
    row("the simulator's session includes everything", program, "simulator/session/A.cpp",
        "#include \"setup/A.h\"\n#include \"files/B.h\"\n#include \"parts/C.h\"\n", "");
    row("an instrument includes a subject", program, "bench/instruments/A.h",
        "#include \"subjects/B.h\"\n", "bench/instruments/A.h: includes subjects/B.h");
    row("a subject includes an instrument", program, "bench/subjects/A.h",
        "#include \"instruments/B.h\"\n#include \"files/C.h\"\n", "");
    row("the program itself includes a session", program, "simulator/main.cpp",
        "#include \"session/B.h\"\n", "");

    const Rule used = buildRules::linksAreUsed;
    row("a folder links one of ours for nothing", used, "src/helper/CMakeLists.txt",
        "velm_library(helper SOURCES A.cpp LINKS velm_base Qt6::Widgets)\n",
        "src/helper/CMakeLists.txt: links velm_base, which nothing uses");
    row("a folder links the toolkit for nothing", used, "src/helper/CMakeLists.txt",
        "target_link_libraries(velm_helper PUBLIC Qt6::Network Qt6::Widgets) # Qt6::Svg\n",
        "src/helper/CMakeLists.txt: links Qt6::Network, which nothing uses");
    row("a folder links what cannot be told", used, "src/helper/CMakeLists.txt",
        "target_link_libraries(helper PRIVATE velm_warnings \"${XCB_LIBRARY}\" fixture)\n", "");
    row("a test links what another test uses", used, "tests/b/CMakeLists.txt",
        "velm_test(b SOURCES b.cpp LINKS Qt6::Widgets)\n",
        "tests/b/CMakeLists.txt: links Qt6::Widgets, which nothing uses");
    row("headers are compiled for other folders", used, "tests/b/CMakeLists.txt",
        "velm_precompiled(b LINKS Qt6::Network HEADERS <QTest>)\nvelm_test(b LINKS Qt6::Gui)\n",
        "tests/b/CMakeLists.txt: links Qt6::Gui, which nothing uses");
    row("a window's class is a use", used, "src/form/CMakeLists.txt",
        "velm_library(form LINKS velm_base velm_grid)\n",
        "src/form/CMakeLists.txt: links velm_base, which nothing uses");

    const Rule named = includeRules::standardNamesHaveTheirHeader;
    row("a standard name without its header", named, "src/grid/A.cpp",
        "#include <memory>\nstd::move(std::unique_ptr<A>());\n",
        "src/grid/A.cpp: uses std::move without utility");
    row("a standard macro without its header", named, "simulator/A.h", "return errno;\n",
        "simulator/A.h: uses errno without cerrno");
    row("a standard name that several headers give, others in texts", named, "src/grid/A.cpp",
        "#include <cstdio>\nstd::size_t a = \"errno\"; // std::move\n", "");
    row("a standard name with another's header", named, "src/grid/A.cpp",
        "#include <array>\nstd::size_t a;\n",
        "src/grid/A.cpp: uses std::size_t without cstddef/cstdio/cstdlib/cstring");
    row("the header of a file's name includes for it", named, "src/helper/Part.cpp",
        "#include \"helper/Part.h\"\nstd::nullopt;\n", "");
    row("another header includes for nobody", named, "src/helper/A.cpp",
        "#include \"helper/Part.h\"\nstd::nullopt;\n",
        "src/helper/A.cpp: uses std::nullopt without optional");
    row("a fuzzer's standard names", named, "fuzz/targets/a.cpp", "std::move(a);\n",
        "fuzz/targets/a.cpp: uses std::move without utility");
    row("a test's standard names", named, "tests/grid/A.cpp", "std::move(a);\n", "");
    row("a name like a standard one", named, "src/grid/A.cpp", "move(errno_, other::move);\n", "");

    const Rule reached = includeRules::namedClassesAreReached;
    row("a class of ours without its header", reached, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nWhole whole;\n",
        "src/grid/A.cpp: names Whole without src/helper/Whole.h");
    row("a class of ours that a fuzzer tries", reached, "fuzz/targets/a.cpp",
        "#include \"helper/Part.h\"\nPart part; Whole whole;\n",
        "fuzz/targets/a.cpp: names Whole without src/helper/Whole.h");
    row("a class of ours by another's header", reached, "src/grid/A.cpp",
        "#include \"helper/Everything.h\"\nWhole whole;\n", "");
    row("a class of ours that is announced", reached, "src/grid/A.h",
        "class Whole;\nWhole *whole; const Whole &ours(); Whole made(); Pointer<Whole> watched;\n",
        "");
    row("a class of ours that is announced, and more", reached, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nvoid a(Whole &whole) { Whole::change(whole); }\n",
        "src/grid/A.cpp: names Whole without src/helper/Whole.h");
    row("a name that is a file's own", reached, "src/grid/A.cpp",
        "struct Whole { int a; };\nWhole whole; enum B { Part }; template <typename Wear> Wear "
        "c;\n",
        "");
    row("a name of something else", reached, "src/grid/A.cpp", "a.Whole = Other::Whole; // Whole\n",
        "");
    row("a class of the toolkit without its header", reached, "src/grid/A.cpp",
        "#include <QLabel>\nQLabel *label; new QTimer; QString text;\n",
        "src/grid/A.cpp: names QTimer without qtimer.h");
    row("a class of the toolkit by one of ours", reached, "src/grid/A.cpp",
        "#include \"helper/ShowsALabel.h\"\nnew QLabel;\n", "");
    row("a class of the toolkit in a window", reached, "src/grid/A.cpp",
        "#include \"ui_Form.h\"\nnew QLineEdit; new QLabel; new QAction; new Part; new QTimer;\n",
        "src/grid/A.cpp: names QTimer without qtimer.h");

    const Rule said = includeRules::standardHeadersAreUsed;
    row("a standard header for nothing", said, "src/grid/A.h",
        "#include <optional>\n#include <utility>\nstd::nullopt; optional; // std::swap\n",
        "src/grid/A.h: uses nothing of utility");
    row("headers that say more than the table", said, "src/grid/A.h",
        "#include <QList>\n#include <cstring>\n#include <unistd.h>\n", "");

    const Rule needed = includeRules::ownHeadersAreUsed;
    row("an own header for nothing", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\" // Part\nint number;\n",
        "src/grid/A.cpp: uses nothing of helper/Part.h");
    row("an own header of which a fuzzer uses nothing", needed, "fuzz/targets/a.cpp",
        "#include \"helper/Part.h\"\nint number;\n",
        "fuzz/targets/a.cpp: uses nothing of helper/Part.h");
    row("an own header for its class", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nPart part;\n", "");
    row("an own header for a member", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nwhole.part().countPins();\n", "");
    row("an own header for an enumerator", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nusing enum A; Worn;\n", "");
    row("an own header for a class that it only announces", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\nWhole whole; std::optional<QLabel> label;\n",
        "src/grid/A.cpp: uses nothing of helper/Part.h");
    row("a class that an included header announces", needed, "src/grid/A.cpp",
        "#include \"helper/Part.h\"\n#include \"helper/Whole.h\"\nPart().whole()->show();\n", "");
    row("a class that nobody announces", needed, "src/grid/A.cpp",
        "#include \"helper/Whole.h\"\nwhole->show();\n",
        "src/grid/A.cpp: uses nothing of helper/Whole.h");
    row("a class that the header of the name announces", needed, "src/helper/Part.cpp",
        "#include \"helper/Part.h\"\n#include \"helper/Whole.h\"\nhandOver(whole);\n", "");
    row("a header that is not there", needed, "src/grid/A.cpp", "#include \"ui_A.h\"\n", "");

    const Rule colours = textRules::coloursStandInThePaletteHelper;
    row("a colour as text", colours, "src/grid/A.cpp", "QColor(u\"#ff0000\"_s); // #00ff00\n",
        "src/grid/A.cpp: #ff0000");
    row("a colour in a style sheet", colours, "src/app/MainWindow.ui",
        "<string>color: #F00; margin: 0</string>\n", "src/app/MainWindow.ui: #F00");
    row("a colour by name", colours, "src/widgets/A.cpp", "setColor(Qt::red);\n",
        "src/widgets/A.cpp: Qt::red");
    row("a colour in numbers", colours, "src/widgets/A.cpp", "const QColor warning{255, 0, 0};\n",
        "src/widgets/A.cpp: QColor warning{2");
    row("colours in the helper", colours, "src/widgets/Palette.cpp", "QColor(0xff, 0, 0);\n", "");
    row("no colour", colours, "src/app/A.cpp", "#define X\nset(Qt::transparent, u\"#1\"_s);\n", "");

    const Rule forks = textRules::nothingForks;
    row("a fork", forks, "src/tool/A.cpp", "if (fork() == 0) {}\n", "src/tool/A.cpp: fork(");
    row("a shell command", forks, "src/app/A.cpp", "std::system(\"ls\"); ::popen (\"ls\");\n",
        "src/app/A.cpp: std::system(\nsrc/app/A.cpp: ::popen (");
    row("a simulated tool that leaves a child behind", forks, "simulator/A.cpp", "fork();\n", "");
    row("the system's locale", forks, "src/app/A.cpp",
        "QLocale::system(); // never fork()\nfont.system();\n", "");

    const Rule owner = textRules::descriptorsHaveOneOwner;
    row("a descriptor closed by hand", owner, "src/tool/A.cpp", "if (bad) ::close(file);\n",
        "src/tool/A.cpp: ::close(");
    row("a descriptor closed by its owner", owner, "src/base/FileDescriptor.cpp",
        "::close(value_);\n", "");
    row("something else that is closed", owner, "src/app/A.cpp",
        "window.close(); QDialog::close(); // ::close(file)\n", "");
    row("a simulated tool that closes its output", owner, "simulator/A.cpp", "::close(1);\n", "");

    const Rule forms = textRules::numbersAndTimesHaveOneForm;
    row("a number by hand", forms, "src/views/A.cpp",
        "arg(QLocale().toString(a), QLocale{}.toString(b)); // QLocale().toString(\n",
        "src/views/A.cpp: QLocale().toString(\nsrc/views/A.cpp: QLocale{}.toString(");
    row("a locale of one's own", forms, "src/views/A.cpp", "const QLocale locale;\n",
        "src/views/A.cpp: QLocale locale;");
    row("a number where all are formed", forms, "src/base/NumberWords.h",
        "QLocale().toString(number);\n", "");
    row("a time where all are formed", forms, "src/base/TimeWords.h",
        "QLocale().toString(when, QLocale::LongFormat);\n", "");
    row("another use of the locale", forms, "src/views/A.cpp",
        "QLocale().createSeparatedList(names); void a(const QLocale &);\n", "");

    const Rule texts = textRules::textsHaveOneForm;
    row("suffixes of texts", texts, "tests/views/A.cpp",
        "using namespace Qt::StringLiterals;\nusing namespace Qt::Literals::StringLiterals;\n",
        "tests/views/A.cpp: Qt::StringLiterals\ntests/views/A.cpp: Qt::Literals::StringLiterals");
    row("suffixes of times", texts, "tests/views/A.cpp",
        "using namespace std::chrono_literals; // Qt::StringLiterals\n", "");

    const QByteArray full(500, '\n');
    row("500 lines", textRules::filesAreShort, "src/app/A.cpp", full.constData(), "");
    row("501 lines", textRules::filesAreShort, "tests/app/A.cpp", (full + "\n").constData(),
        "tests/app/A.cpp: 501 lines");

    const Rule licence = textRules::filesNameTheirLicence;
    row("a source with its licence", licence, "src/app/A.cpp",
        "// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n\nint a;\n", "");
    row("a script with its licence", licence, "bench/run",
        "#!/bin/sh\n# SPDX-FileCopyrightText: 2026 A\n# SPDX-License-Identifier: MIT\n", "");
    row("a source with its licence further down", licence, "src/app/A.h",
        "\n// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n",
        "src/app/A.h: begins without its licence");
    row("a script of nobody", licence, "bench/run", "#!/bin/sh\n# SPDX-License-Identifier: MIT\n",
        "bench/run: begins without its licence");
    row("a source under another licence", licence, "src/app/A.cpp",
        "// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: Other\n",
        "src/app/A.cpp: begins without its licence");
}

void TestLayers::ruleNotices() {
    QFETCH(Rule, rule);
    QFETCH(QString, path);
    QFETCH(QString, text);
    QFETCH(QString, breaches);
    const SourceTree tree = {
        {path, text},
        {QStringLiteral("src/helper/ShowsALabel.h"),
         QStringLiteral("// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n"
                        "#include <QLabel>\n")},
        {QStringLiteral("src/helper/Part.h"),
         QStringLiteral("// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n"
                        "#include <QLabel>\n#include <optional>\nclass Whole;\n"
                        "enum class Wear { New, Worn };\n"
                        "class Part final : QLabel {\n"
                        "    explicit Part(std::optional<int> number);\n"
                        "    int countPins() const { return int(1); }\n};\n")},
        {QStringLiteral("src/helper/Whole.h"),
         QStringLiteral("// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n"
                        "class Whole {};\n")},
        {QStringLiteral("src/helper/Everything.h"),
         QStringLiteral("// SPDX-FileCopyrightText: 2026 A\n// SPDX-License-Identifier: MIT\n"
                        "#include \"helper/Whole.h\"\nusing Everything = Whole;\n")},
        {QStringLiteral("src/form/Form.ui"),
         QStringLiteral("<widget class=\"QLineEdit\"/><header>helper/Part.h</header>\n"
                        "<header>helper/ShowsALabel.h</header><action name=\"a\"/>\n"
                        "<header>grid/GridView.h</header>\n")}};
    QCOMPARE(rule(tree).join(u'\n'), breaches);
}

void TestLayers::commentsAreBlanked_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("code");
    const auto row = [](const char *name, const char *text, const char *code) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(code);
    };
    row("to the end of the line", "a; // b\nc;", "a; \nc;");
    row("over lines", "a /* b\nc */ d", "a \n d");
    row("inside a text", "u\"http://x\" // y", "u\"http://x\" ");
    row("after a quoted quote", "\"\\\"//\" '\"' // y", "\"\\\"//\" '\"' ");
    row("inside a raw text", "R\"(// \" )\" // y", "R\"(// \" )\" ");
}

void TestLayers::commentsAreBlanked() {
    QFETCH(QString, text);
    QFETCH(QString, code);
    QCOMPARE(withoutComments(text), code);
}

QTEST_GUILESS_MAIN(TestLayers)
#include "tst_layers.moc"
