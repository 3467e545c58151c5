// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/ComparisonWiring.h"

#include "app/MainWindow.h"
#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "grid/ShownTab.h"
#include "imageviews/DifferenceSteps.h"
#include "imageviews/ImageComparison.h"
#include "imageviews/SideBySide.h"

#include "ui_MainWindow.h"

#include <QMenu>

#include <optional>

ImageComparison &makeComparison(MainWindow &window, AppDelegate &delegate) {
    const Ui::MainWindow &c = window.controls();
    const auto images = [&c, &delegate] {
        const AppDelegate::State &state = delegate.state();
        return ComparedImages{state.read_from_chip_data, state.output_data,
                              delegate.imageRevision(), shownTab(*c.tabview)};
    };
    auto *comparison = new ImageComparison(images, &window);
    const auto refresh = [comparison] { comparison->refresh(); };
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, comparison, refresh);
    QObject::connect(&delegate, &AppDelegate::imageToBurnChanged, comparison, refresh);
    QObject::connect(&delegate, &AppDelegate::readDataTaken, comparison, refresh);
    QObject::connect(comparison, &ImageComparison::changed, c.tableview, &GridView::refreshMarks);
    c.tableview->addMarks(*comparison);
    refresh();
    return *comparison;
}

SideBySide &makeSideBySide(MainWindow &window, const AppDelegate &delegate,
                           ImageComparison &comparison) {
    const Ui::MainWindow &c = window.controls();
    using Other = SideBySide::OtherImage;
    const auto other = [&c, &delegate, &comparison]() -> std::optional<Other> {
        const ShownTab shown = shownTab(*c.tabview);
        if (!showsImage(shown) || !comparison.hasBoth())
            return std::nullopt;
        if (shown == ShownTab::Read)
            return Other{delegate.state().output_data, delegate.imageRevision(),
                         AppDelegate::tr("Beside: data to burn")};
        return Other{delegate.state().read_from_chip_data, 0,
                     AppDelegate::tr("Beside: data read from chip")};
    };
    auto *sideBySide =
        new SideBySide({*c.tableview, *c.besideGrid, *c.besideHeading}, other, &window);
    c.besideGrid->addMarks(comparison.marksBeside());
    QObject::connect(&delegate, &AppDelegate::shownContentChanged, sideBySide,
                     &SideBySide::refresh);
    QObject::connect(&comparison, &ImageComparison::changed, sideBySide, &SideBySide::refresh);
    QObject::connect(&comparison, &ImageComparison::changed, c.besideGrid, &GridView::refreshMarks);
    return *sideBySide;
}

void addDifferenceSteps(QMenu &menu, MainWindow &window, const ImageComparison &comparison,
                        Messages &messages) {
    const auto say = [&messages](const QString &sentence) {
        messages.say(Topic::Differences, sentence);
    };
    auto *steps = new DifferenceSteps(*window.controls().tableview, comparison, say, &window);
    menu.addAction(steps->nextAction());
    menu.addAction(steps->previousAction());
}
