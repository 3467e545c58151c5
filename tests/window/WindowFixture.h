// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/VelmWindow.h"
#include "control/FilePanels.h"
#include "settings/SettingsStore.h"
#include "support/RecordingLog.h"

#include "ui_MainWindow.h"

#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

/// File panels that a test answers for the user.
class AnsweringPanels final : public FilePanels {
public:
    void begin(QWidget *parent, const FilePanelRequest &request,
               std::function<void(const QString &path)> chosen) override {
        requests.append(request);
        lastParent = parent;
        if (whileOpen)
            whileOpen();
        if (!answer.isEmpty())
            chosen(answer);
    }

    QByteArray look() const override { return lastLook; }
    void setLook(const QByteArray &look) override { lastLook = look; }

    QByteArray lastLook;
    QList<FilePanelRequest> requests;
    QWidget *lastParent = nullptr;
    /// The path that the user chooses; empty cancels.
    QString answer;
    /// What happens while a panel is open.
    std::function<void()> whileOpen;
};

/// A whole program but for its process, in a folder of its own: real widgets, a real login shell,
/// and the simulated programmer (or a shell script of the test's) as the tool.
class WindowFixture {
public:
    WindowFixture();
    ~WindowFixture();

    /// Makes the window and starts it up. What a test puts into settings() or the folder before
    /// is what the program finds.
    void start();
    /// False before start() and after end().
    bool hasStarted() const { return velm_ != nullptr; }
    /// Ends the program, as a restart does; settings and files stay.
    void end();

    /// The absolute path of \a name in this test's folder; nothing is made there.
    QString path(const QString &name) const { return folder_.filePath(name); }
    /// Writes a file in this test's folder (or at an absolute path) and gives its path.
    QString write(const QString &name, const QByteArray &bytes) const;
    /// The bytes of a file; null if there is none.
    static QByteArray bytesOf(const QString &path);
    /// Makes \a command the programmer tool, as a user does who types it.
    void setTool(const QString &command);
    /// Makes \a script, run by /bin/sh with the tool's arguments, the programmer tool.
    void useTool(const QByteArray &script);
    /// Makes the simulated programmer the programmer tool.
    void useSimulator();
    /// The file that holds the content of the simulated chip \a device.
    QString chipPath(const QString &device) const;

    SettingsStore &settings() { return *settings_; }
    VelmWindow &velm() { return *velm_; }
    AppDelegate &delegate() { return velm_->delegate(); }
    const AppDelegate::State &state() { return delegate().state(); }
    Ui::MainWindow &controls() { return velm_->window().controls(); }
    /// The entries of the menu Open recent, which must exist.
    QList<QAction *> recentEntries();
    /// Their texts: the paths, the newest first.
    QStringList recentFiles();
    QString message() { return controls().messageLine->toPlainText(); }
    /// Clicks with the mouse, as a user does, where a check box has its box.
    void click(QWidget *button) {
        const QPoint box(boxOffset, button->height() / 2);
        QTest::mouseClick(button, Qt::LeftButton, {}, box);
    }
    /// Does \a work once, as soon as the tool runs (for an operation or a search) and the event
    /// loop turns.
    void whileBusy(const std::function<void()> &work);
    /// Runs everything that waits on the main queue and in the console.
    void settle();
    /// The text of a cell of the grid as it is shown.
    QString cell(int row, int column);
    /// A row of the grid as text: its eighteen cells, separated by single blanks.
    QString row(int row);
    QString temporary(const QString &name) const {
        return path(QStringLiteral("workspace/") + name);
    }

    RecordingLog log;
    AnsweringPanels panels;
    int beeps = 0;
    /// Whether another window has the folder of the temporary files.
    bool folderIsAnothers = false;

private:
    static constexpr int boxOffset = 10; ///< pixels

    void openSettings();

    QTemporaryDir folder_;
    std::unique_ptr<SettingsStore> settings_;
    std::unique_ptr<VelmWindow> velm_;
};
