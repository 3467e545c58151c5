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

    /// Shows the newest run of \a runs, which must live as long.
    void setRuns(const RunLog &runs);

    /// The words, as they are shown.
    QString text() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void showNewest();

    const RunLog *runs_ = nullptr;
    QLabel *icon_ = nullptr;
    QLabel *words_ = nullptr;
};
