// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/NextStepButtons.h"

#include "app/MainWindow.h"
#include "control/ActionGate.h"
#include "control/AppDelegate.h"
#include "control/UserFiles.h"
#include "grid/GridColumns.h"
#include "language/CommandLine.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include "ui_MainWindow.h"

#include <QClipboard>
#include <QGuiApplication>

#include <variant>

/// Makes the button for each kind of step.
struct NextStepButtons::Maker {
    Messages::Action operator()(const nextSteps::PadTo &pad) const {
        const QString size = QString::number(pad.kibibytes);
        return {
            tr("Pad to %1 KiB").arg(size), [with = with, size] {
                if (with.gate.refusesElseCommits())
                    return;
                with.settings.setValues({{settingsKeys::pad_to, size}, {settingsKeys::pad, true}});
                with.delegate.build_and_reload();
            }};
    }

    Messages::Action operator()(const nextSteps::RemoveWriteProtection &) const {
        return {tr("Remove write protection"),
                [with = with] { with.settings.setValue(settingsKeys::unprotect, true); }};
    }

    Messages::Action operator()(const nextSteps::ChooseTool &) const {
        return {tr("Choose the tool"), [with = with] {
                    with.files.chooseTool(&with.window, [with](const QString &path) {
                        with.settings.setValue(settingsKeys::miniproLocation, shellWord(path));
                    });
                }};
    }

    Messages::Action operator()(const nextSteps::CopyUdevRule &copy) const {
        return {tr("Copy the udev rule"),
                [rule = copy.rule] { QGuiApplication::clipboard()->setText(rule); }};
    }

    Messages::Action operator()(const nextSteps::ShowDifference &difference) const {
        return {tr("Show the difference"), [with = with, address = difference.address] {
                    Ui::MainWindow &c = with.window.controls();
                    c.tabview->selectTabViewItem(burnTabIdentifier());
                    if (c.tableview->showAddress(address))
                        c.tableview->setFocus(Qt::OtherFocusReason);
                }};
    }

    Messages::Action operator()(const nextSteps::ReadAgain &) const {
        return {tr("Read again"), [with = with] { with.window.controls().btn_read->click(); }};
    }

    const Surroundings &with;
};

Messages::Action NextStepButtons::buttonFor(const NextStep &step) const {
    return std::visit(Maker{with_}, step);
}
