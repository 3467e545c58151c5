// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/UserFiles.h"
#include "language/LogicReport.h"
#include "language/PinFailures.h"

#include <QWidget>

#include <functional>
#include <optional>

class GridView;
class LogicSeries;
class PackageView;
struct PackagePicture;
class QPlainTextEdit;
class QScrollArea;
class RepeatControls;
class TabView;
struct RunRecord;

/// The column beside the table of a logic test: the chip with what came of its pins, the pins that
/// failed, and what the letters mean. It is there while the results are shown, and only for a
/// package that can be drawn. While a test is repeated it stays, and shows what was counted.
class LogicResultsView final : public QWidget {
    Q_OBJECT

public:
    /// What it follows.
    struct Sources {
        TabView &tabs;
        GridView &grid;
        /// The report that the grid shows on the results tab.
        std::function<LogicReport()> report;
        const LogicSeries &series;
    };

    explicit LogicResultsView(QWidget *parent = nullptr);

    /// From now on shows what \a sources have, which must outlive it. A vector whose row alone is
    /// selected is shown by itself, else the worst of all vectors.
    void follow(const Sources &sources);
    /// Takes the report that the sources have now. To be called when the grid shows another one.
    void takeReport();
    /// Takes from \a run which device was tested, if it was a logic test.
    void takeRun(const RunRecord &run);
    /// The controls that ask for repeated tests.
    RepeatControls *repeatControls() const { return repeat_; }

signals:
    /// The user wants to save \a document.
    void saveRequested(const UserFiles::Document &document);

protected:
    void changeEvent(QEvent *event) override;

private:
    void addSaving();
    void takeSeries();
    bool isRepeated() const;
    bool keepsReport() const;
    void showText();
    QStringList countedWords(std::optional<int> vector) const;
    void showPins();
    QString captionFor(std::optional<int> vector) const;
    QStringList sentencesIn(std::optional<int> vector) const;
    void addCounts(PackagePicture &picture, std::optional<int> vector) const;
    void fit();
    std::optional<qsizetype> chosenRow() const;
    QString wholeText() const;
    void savePicture();
    void saveText();

    std::optional<Sources> sources_;
    QString device_;
    LogicReport report_;
    QList<PinFailure> failures_;
    PackageView *package_;
    QScrollArea *area_;
    QPlainTextEdit *text_;
    RepeatControls *repeat_;
};
