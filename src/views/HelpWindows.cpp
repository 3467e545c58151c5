// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/HelpWindows.h"

#include "views/SideWindow.h"
#include "widgets/Icons.h"
#include "widgets/WindowFront.h"

#include <QApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QTextBrowser>

#include <algorithm>

/// Outside of any namespace, as the resource system wants it: a static library's resources are not
/// registered by themselves.
static void registerHelp() {
    Q_INIT_RESOURCE(help);
}

namespace {

constexpr int guideColumns = 90;
constexpr int guideLines = 40;
constexpr int iconSize = 64;

/// Shows the pictures of the guide, which are as large as the window, no wider than its text.
class GuideBrowser final : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl &name) override {
        const QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        const QImage picture = QImage::fromData(resource.toByteArray());
        const int width = guideColumns * fontMetrics().averageCharWidth();
        return picture.scaledToWidth(std::min(picture.width(), width), Qt::SmoothTransformation);
    }
};

/// The window \a name beside \a window, if it is open: it comes to the front.
bool raiseOpen(const QWidget *window, const QString &name) {
    auto *open = window->findChild<QDialog *>(name);
    if (!open || !open->isVisible())
        return false;
    bringUp(*open);
    return true;
}

QString aboutText() {
    const QString description = QApplication::translate(
        "HelpWindows", "Reads, writes and tests chips with the minipro programmer tool.");
    const QString licence =
        QApplication::translate("HelpWindows", "Free software under the MIT licence.");
    return QStringLiteral("VELM %1\n\n%2\n%3")
        .arg(QApplication::applicationVersion(), description, licence);
}

} // namespace

void showGuide(QWidget *window) {
    const QString name = QStringLiteral("guide");
    if (raiseOpen(window, name))
        return;
    registerHelp();
    const QString title = QApplication::translate("HelpWindows", "User guide");
    auto *browser = new GuideBrowser;
    browser->setAccessibleName(title);
    browser->setOpenExternalLinks(true);
    browser->setSource(QUrl(QStringLiteral("qrc:/velm/help/guide.md")));
    QDialog *dialog = makeSideWindow(window, name, title, browser);
    const QFontMetrics letters = browser->fontMetrics();
    dialog->resize((guideColumns + 10) * letters.averageCharWidth(),
                   guideLines * letters.lineSpacing());
    dialog->show();
}

void showAbout(QWidget *window) {
    const QString name = QStringLiteral("about");
    if (raiseOpen(window, name))
        return;
    auto *content = new QWidget;
    auto *icon = new QLabel(content);
    icon->setPixmap(programIcon().pixmap(iconSize));
    auto *text = new QLabel(aboutText(), content);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *row = new QHBoxLayout(content);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(text, 1);
    makeSideWindow(window, name, QApplication::translate("HelpWindows", "About VELM"), content)
        ->show();
}
