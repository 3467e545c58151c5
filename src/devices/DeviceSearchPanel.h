// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QString>

#include <memory>

class QPushButton;
class device_searcher;

namespace Ui {
class DeviceSearchPanel;
}

/// The window of the device search: a term, a list and two buttons. What the buttons do is
/// connected by whoever shows the panel; ending the panel in any other way than by OK is a Cancel
/// and also ends a search in progress. What is typed into the filter leaves fewer names in sight.
/// Down leads from the term and from the filter to the first name found, and from the filter also
/// to what is offered without a search. Shown anew, the panel still has its whole list, but says
/// what to do: what was said of the search before may no longer be true.
class DeviceSearchPanel final : public QDialog {
    Q_OBJECT

public:
    /// A panel for \a searcher, which gets its controls here.
    explicit DeviceSearchPanel(device_searcher &searcher, QWidget *parent = nullptr);
    ~DeviceSearchPanel() override;

    QPushButton *okButton() const;
    QPushButton *cancelButton() const;

    /// Offers \a names without a search, above the list.
    void setLikely(const QStringList &names);

public slots:
    void done(int code) override;

protected:
    bool eventFilter(QObject *field, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void setSearching(bool searching);

    device_searcher &searcher_;
    std::unique_ptr<Ui::DeviceSearchPanel> controls_;
    QString whatToDo_;
};
