// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QLabel;
class RunLog;

/// The newest verdict at a glance: an icon, and in a few words what happened to which device, and
/// when. The message line has the sentence.
class VerdictHeading final : public QWidget {
    Q_OBJECT

public:
    explicit VerdictHeading(QWidget *parent = nullptr);

    /// Shows the newest run of \a runs, which must outlive it.
    void setRuns(const RunLog &runs);

    /// The words, however many of them have room.
    QString text() const { return text_; }

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void showNewest();
    void fitWords();

    const RunLog *runs_ = nullptr;
    QLabel *icon_ = nullptr;
    QLabel *words_ = nullptr;
    QString text_;
};
