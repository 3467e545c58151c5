// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/WindowWiring.h"

#include "app/GoToAddress.h"
#include "app/MainWindow.h"
#include "app/SelectionWiring.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "control/UserFiles.h"
#include "devices/DeviceSearchPanel.h"
#include "devices/UAStringManager.h"
#include "grid/GridColumns.h"
#include "grid/ShownTab.h"
#include "settings/SettingsKeys.h"
#include "widgets/ConsoleView.h"
#include "widgets/FixedFont.h"
#include "widgets/HeldKeys.h"
#include "widgets/Icons.h"
#include "widgets/KeyBinder.h"
#include "widgets/MenuKeys.h"

#include "ui_MainWindow.h"

#include <utility>

namespace {

constexpr int consoleLines = 4;

void fillOutlets(Ui::MainWindow &c, AppDelegate &delegate, const WindowParts &parts) {
    AppDelegateOutlets &outlets = delegate.outlets;
    outlets.tabview = c.tabview;
    outlets.tableview = c.tableview;
    outlets.textView = c.textView;
    outlets.peeping_at = c.peeping_at;
    outlets.searchDevicesWindow = &parts.searchPanel;
    outlets.devicesearcher = &parts.searcher;
    outlets.readFileTextField = c.readFileTextField;
    outlets.startAddTextField = c.startAddTextField;
    outlets.padToTextField = c.padToTextField;
    outlets.btn_combine_read_data = c.btn_combine_read_data;
    outlets.btn_pad = c.btn_pad;
    outlets.btn_pad_ff = c.btn_pad_ff;
    outlets.btn_pad_00 = c.btn_pad_00;
}

void wireGrid(Ui::MainWindow &c, AppDelegate &delegate, Messages &messages) {
    c.tableview->setSource(delegate);
    c.findBar->follow(*c.tableview, [&delegate] { return delegate.state().display_data; });
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, &c.findBar->finder(),
                     &ImageFinder::beginAnew);
    QObject::connect(&delegate, &AppDelegate::shownBytesChanged, &c.findBar->finder(),
                     &ImageFinder::forget);
    QObject::connect(&delegate.edits(), &EditOffers::restored, c.tableview,
                     [grid = c.tableview] { grid->setFocus(Qt::OtherFocusReason); });
    QLineEdit &address = c.findBar->addressField();
    new GoToAddress(address, *c.tableview, messages, delegate, &address);
}

/// Says how much of the shown image does not read as text.
void sayHiddenBytes(const Ui::MainWindow &c, AppDelegate &delegate, Messages &messages) {
    const auto say = [tabs = c.tabview, &delegate, &messages] {
        messages.say(Topic::HiddenBytes, showsImage(shownTab(*tabs))
                                             ? hiddenBytesRemark(delegate.state().strData)
                                             : QString());
    };
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, c.tabview, say);
    QObject::connect(&delegate, &AppDelegate::shownBytesChanged, c.tabview, say);
}

/// What there is to do where \a tab has nothing to show.
QString hintFor(ShownTab tab) {
    if (tab == ShownTab::Read)
        return AppDelegate::tr(
                   "Nothing has been read yet.\nPut the chip into the programmer, name it "
                   "under Device, and press Read (%1).")
            .arg(keyWords(menuKeys::read));
    if (tab == ShownTab::ToBurn)
        return AppDelegate::tr("There are no data to burn yet.\nOpen a binary (%1), or read a "
                               "chip and turn on Use data read from chip.")
            .arg(keyWords(menuKeys::openBinary));
    return AppDelegate::tr(
               "No logic IC has been tested yet.\nName it under Device, and press Logic "
               "test (%1).")
        .arg(keyWords(menuKeys::testLogic));
}

/// An empty grid says what to do, to the eye and to assistive technology.
void hintInEmptyGrid(Ui::MainWindow &c, AppDelegate &delegate) {
    const auto hint = [grid = c.tableview, tabs = c.tabview] {
        grid->hint().setText(hintFor(shownTab(*tabs)));
        grid->setAccessibleDescription(grid->hint().shown());
    };
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, c.tableview, hint);
    QObject::connect(&delegate, &AppDelegate::shownBytesChanged, c.tableview, hint);
}

void wireConsole(Ui::MainWindow &c, UserFiles &files, Messages &messages) {
    QObject::connect(
        c.textView, &ConsoleView::saveRequested, &files, [&files, console = c.textView] {
            files.saveConsole(console->window(), [console] { return console->storedText(); });
        });
    QObject::connect(c.textView, &ConsoleView::trimmed, c.textView, [&messages] {
        messages.say(Topic::Console,
                     AppDelegate::tr("The console is full: its oldest text has gone."));
    });
    QObject::connect(c.textView, &ConsoleView::shortened, c.textView, [&messages] {
        messages.say(
            Topic::Console,
            AppDelegate::tr("The console shows its last lines alone. What is copied whole, "
                            "or saved, has all of them."));
    });
    QObject::connect(c.textView, &ConsoleView::cleared, c.textView,
                     [&messages] { messages.happened(Event::ConsoleCleared); });
}

void wireTabs(Ui::MainWindow &c, AppDelegate &delegate, const ActionGate &gate) {
    c.tabview->addTabViewItem(readTabIdentifier(), AppDelegate::tr("Data read from chip"));
    c.tabview->addTabViewItem(burnTabIdentifier(), AppDelegate::tr("Data to burn"));
    c.tabview->addTabViewItem(logicTabIdentifier(), AppDelegate::tr("Logic test results"));
    QObject::connect(c.tabview, &TabView::aboutToSelectTabViewItem, &delegate,
                     [&gate] { gate.commitPendingInput(); });
    QObject::connect(c.tabview, &TabView::didSelectTabViewItem, &delegate,
                     [&delegate, tabs = c.tabview](const TabViewItem &item) {
                         delegate.tabView_didSelectTabViewItem(tabs, item);
                     });
}

void wireOperations(Ui::MainWindow &c, AppDelegate &delegate) {
    for (QPushButton *button : {c.btn_read, c.btn_verify, c.btn_write})
        QObject::connect(button, &QPushButton::clicked, &delegate,
                         [&delegate, button] { delegate.go(button); });
    QObject::connect(c.btn_logic, &QPushButton::clicked, &delegate,
                     [&delegate, button = c.btn_logic] { delegate.testLogic(button); });
    QObject::connect(c.btn_stop, &QPushButton::clicked, &delegate, &AppDelegate::stopRun);
}

void bindControls(Ui::MainWindow &c, AppDelegate &delegate, KeyBinder &binder) {
    // A cell that is still open belongs to the image that the composition replaces.
    const auto compose = [&delegate, grid = c.tableview](QObject *sender) {
        grid->entries().commit();
        delegate.handleControl(sender);
    };
    binder.bindText(c.uaTextField, settingsKeys::device);
    binder.bindText(c.miniproLocationField, settingsKeys::miniproLocation);
    binder.bindText(c.readFileTextField, settingsKeys::binary);
    binder.bindSwitch(c.check_noIDMismatchError, settingsKeys::noIDMismatchError);
    binder.bindSwitch(c.check_noSizeMismatchError, settingsKeys::noSizeMismatchError);
    binder.bindSwitch(c.check_skipErase, settingsKeys::skipErase);
    binder.bindSwitch(c.check_unprotect, settingsKeys::unprotect);
    binder.bindTextWithAction(c.startAddTextField, settingsKeys::rom_start_address, compose);
    binder.bindTextWithAction(c.padToTextField, settingsKeys::pad_to, compose);
    binder.bindSwitch(c.btn_pad, settingsKeys::pad, compose);
    binder.bindRadioPair(c.btn_pad_ff, settingsKeys::pad_ff, c.btn_pad_00, settingsKeys::pad_00,
                         compose);
    binder.bindSwitch(c.btn_combine_read_data, QString(), compose);
}

void wireDevices(Ui::MainWindow &c, AppDelegate &delegate, const WindowParts &parts) {
    UAStringManager &favourites = parts.favourites;
    favourites.dButton = c.dButton;
    favourites.uaTextField = c.uaTextField;
    favourites.awakeFromNib();
    QObject::connect(c.btn_add_favourite, &QToolButton::clicked, &favourites,
                     [&favourites, &c] { favourites.addFavourite(c.btn_add_favourite); });
    QObject::connect(c.btn_remove_favourite, &QToolButton::clicked, &favourites,
                     [&favourites, &c] { favourites.removeFavourite(c.btn_remove_favourite); });
    QObject::connect(&favourites, &UAStringManager::remark, c.dButton,
                     [&messages = parts.messages](const QString &sentence) {
                         messages.say(Topic::Favourites, sentence);
                     });
    QObject::connect(&favourites, &UAStringManager::listChanged, c.dButton,
                     [&messages = parts.messages] { messages.happened(Event::FavouritesChanged); });
    QObject::connect(&favourites, &UAStringManager::listShown, c.dButton,
                     [&messages = parts.messages] { messages.happened(Event::FavouritesShown); });
    QObject::connect(c.btn_search, &QPushButton::clicked, &delegate,
                     [&delegate, &c] { delegate.showListPanel(c.btn_search); });
    QPushButton *ok = parts.searchPanel.okButton();
    QPushButton *cancel = parts.searchPanel.cancelButton();
    QObject::connect(ok, &QPushButton::clicked, &delegate,
                     [&delegate, ok] { delegate.deviceSearchPanelOK(ok); });
    QObject::connect(cancel, &QPushButton::clicked, &delegate,
                     [&delegate, cancel] { delegate.deviceSearchPanelCancel(cancel); });
}

void wireFiles(Ui::MainWindow &c, AppDelegate &delegate) {
    const auto onClick = [&delegate](QPushButton *button, void (AppDelegate::*action)(QObject *)) {
        QObject::connect(button, &QPushButton::clicked, &delegate,
                         [&delegate, button, action] { (delegate.*action)(button); });
    };
    onClick(c.btn_open, &AppDelegate::browseBinaryFile);
    onClick(c.btn_export_read, &AppDelegate::export_read_from_chip_data);
    onClick(c.btn_export_output, &AppDelegate::export_output_data);
    QObject::connect(&delegate.edits(), &EditOffers::saveAsked, &delegate,
                     [&delegate] { delegate.export_output_data(&delegate); });
}

/// The icons are drawn in the palette's colour, so they are made anew when that changes.
void setIcons(Ui::MainWindow &c, const QPalette &palette) {
    const std::pair<QAbstractButton *, const char *> icons[] = {
        {c.btn_read, "read-chip"},
        {c.btn_verify, "verify"},
        {c.btn_write, "write"},
        {c.btn_logic, "logic"},
        {c.btn_stop, "stop"},
        {c.btn_search, "search"},
        {c.dButton, "favourite"},
        {c.btn_add_favourite, "add"},
        {c.btn_remove_favourite, "remove"},
        {c.btn_open, "open"},
        {c.btn_export_read, "save"},
        {c.btn_export_output, "save"},
        {c.btn_copy_command, "copy"},
    };
    for (const auto &[button, name] : icons)
        button->setIcon(themedIcon(QLatin1String(name), palette));
}

/// The tool tip says what the field is for; that it is empty is said only while it is.
void describeWhileEmpty(QLineEdit *field) {
    const auto describe = [field] {
        field->setAccessibleDescription(field->text().isEmpty() ? field->placeholderText()
                                                                : QString());
    };
    QObject::connect(field, &QLineEdit::textChanged, field, describe);
    describe();
}

void setAppearance(MainWindow &window) {
    Ui::MainWindow &c = window.controls();
    setIcons(c, window.palette());
    QObject::connect(&window, &MainWindow::paletteChanged, &window,
                     [&window] { setIcons(window.controls(), window.palette()); });
    const QFont fixed = fixedFont();
    c.startAddTextField->setFont(fixed);
    describeWhileEmpty(c.readFileTextField);
    c.padToTextField->setFont(fixed);
    c.splitter->setStretchFactor(0, 1);
    c.splitter->setStretchFactor(1, 0);
    const int console = c.textView->heightFor(consoleLines);
    c.splitter->setSizes({c.splitter->height() - console, console});
}

} // namespace

void wireMainWindow(MainWindow &window, AppDelegate &delegate, const WindowParts &parts) {
    Ui::MainWindow &controls = window.controls();
    delegate.setWindow(&window);
    fillOutlets(controls, delegate, parts);
    parts.gate.setPendingInput([&binder = parts.binder, grid = controls.tableview] {
        binder.commitPending();
        grid->entries().commit();
    });
    wireGrid(controls, delegate, parts.messages);
    sayHiddenBytes(controls, delegate, parts.messages);
    wireSelection(window, parts.messages);
    wireConsole(controls, parts.files, parts.messages);
    wireTabs(controls, delegate, parts.gate);
    hintInEmptyGrid(controls, delegate);
    wireOperations(controls, delegate);
    bindControls(controls, delegate, parts.binder);
    wireDevices(controls, delegate, parts);
    wireFiles(controls, delegate);
    new HeldKeys(&window);
    setAppearance(window);
}
