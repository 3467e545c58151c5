// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/ImageFinder.h"
#include "inspect/BytePattern.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class GridView;
class QLineEdit;

namespace Ui {
class FindBar;
}

/// The bar below the grid from which bytes are searched for and addresses gone to. It shows only
/// when it is asked for; Escape puts it away and gives the grid the keyboard. What was searched for
/// last stays in it.
class FindBar final : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget *parent = nullptr);
    ~FindBar() override;

    /// Searches what \a shown gives, and \a grid shows, from now on.
    void follow(GridView &grid, ImageFinder::Source shown);
    /// What searches; to be told of each change of the image.
    ImageFinder &finder() { return finder_; }

    Ui::FindBar &controls() { return *controls_; }
    QLineEdit &addressField();

    /// Shows the bar and has its text typed anew.
    void find();
    /// Shows the bar and has the address typed anew.
    void findAddress();
    /// Goes to the next hit, wherever the keyboard is. Without anything to search for, as find().
    void findNext() { step(ImageFinder::Direction::Next); }
    void findPrevious() { step(ImageFinder::Direction::Previous); }
    /// Puts the bar away, and the marks of the hits with it.
    void dismiss();

signals:
    /// Assistive technology is told how the search stands: \a words.
    void announced(const QString &words);

protected:
    bool eventFilter(QObject *field, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void connectControls();
    void open();
    void step(ImageFinder::Direction direction);
    PatternOutcome outcome() const;
    void takePattern();
    void showKind();
    void showState();
    void say(const QString &count, const QString &remark);
    void announceSoon();
    void announce();
    void setIcon();

    std::unique_ptr<Ui::FindBar> controls_;
    ImageFinder finder_;
    GridView *grid_ = nullptr;
    QString trouble_; ///< why the text cannot be searched for
    QTimer announcement_;
};
