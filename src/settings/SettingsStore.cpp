// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsStore.h"

#include "files/SystemName.h"
#include "settings/StoredValue.h"

#include <QDeadlineTimer>

#include <tuple>
#include <utility>

namespace {

QString keptAsideWords(const QString &copy) {
    return SettingsStore::tr("The settings file could not be read; it is kept as %1.").arg(copy);
}

} // namespace

SettingsStore::SettingsStore(const QString &filePath, QObject *parent)
    : QObject(parent), file_(filePath) {
    connect(&file_.saving(), &BoundedSaving::refused, this, [this](const Failure &failure) {
        takeBackUnconfirmed();
        tellOf(failure);
    });
    connect(&file_.saving(), &BoundedSaving::confirmed, this, [this] {
        unconfirmed_.clear();
        if (unsaved_.isEmpty())
            tellOf(Result<void>());
    });
    open();
    announced_ = visibleValues();
}

SettingsStore::~SettingsStore() {
    if (!unsaved_.isEmpty())
        std::ignore = trySaving();
}

void SettingsStore::open() {
    const IniFile::Outcome outcome = file_.read();
    if (outcome) {
        stored_ = *outcome;
    } else {
        unreadFile_ = UnreadFile{tr("VELM starts with its defaults, since the settings in %1 could "
                                    "not be read: %2")
                                     .arg(filePath(), outcome.failure()->failure.reason)};
    }
}

// Whoever had the file until now may have written it since it was opened. If it cannot be read this
// time, what was read then holds.
void SettingsStore::claimFile() {
    const IniFile::Outcome outcome = file_.read();
    if (outcome) {
        stored_ = *outcome;
        unreadFile_.reset();
    } else if (IniFile::isDamaged(outcome)) {
        stored_.clear();
        unreadFile_ = withoutDamagedFile();
    }
    announceChanges();
}

SettingsStore::UnreadFile SettingsStore::withoutDamagedFile() const {
    const Result<QString> copy = file_.moveAside();
    if (copy)
        return {keptAsideWords(*copy) + u' ' + tr("VELM starts with its defaults."), *copy};
    return {tr("VELM starts with its defaults, since the settings file %1 is damaged; it could not "
               "be moved aside: %2")
                .arg(filePath(), copy.failure()->reason)};
}

void SettingsStore::registerDefaults(const QVariantMap &defaults) {
    for (auto value = defaults.begin(); value != defaults.end(); ++value)
        defaults_.insert(value.key(), storedValue::encoded(value.value()));
    announceChanges();
}

bool SettingsStore::setValue(const QString &key, const QVariant &value) {
    return setValues({{key, value}});
}

bool SettingsStore::setValues(const QVariantMap &values) {
    const QStringList keys = values.keys();
    if (!mayChange()) {
        for (const QString &key : keys)
            emit changeRefused(key);
        return false;
    }
    for (auto value = values.begin(); value != values.end(); ++value)
        unsaved_.insert(value.key(), storedValue::encoded(value.value()));
    save();
    for (const QString &key : keys)
        emit valueSet(key);
    announceChanges();
    return true;
}

void SettingsStore::setGuard(std::function<bool()> mayChange) {
    mayChange_ = std::move(mayChange);
}

bool SettingsStore::mayChange() const {
    return !mayChange_ || mayChange_();
}

QString SettingsStore::stringValue(const QString &key) const {
    if (const auto stored = storedValue::text(storedVariant(key)))
        return *stored;
    return storedValue::text(defaults_.value(key)).value_or(QString());
}

bool SettingsStore::boolValue(const QString &key) const {
    if (const auto stored = storedValue::boolean(storedVariant(key)))
        return *stored;
    return storedValue::boolean(defaults_.value(key)).value_or(false);
}

QStringList SettingsStore::stringListValue(const QString &key) const {
    if (isStored(key))
        return storedValue::list(storedVariant(key));
    return storedValue::list(defaults_.value(key));
}

QString SettingsStore::filePath() const {
    return file_.path();
}

bool SettingsStore::isStored(const QString &key) const {
    return unsaved_.contains(key) || stored_.contains(key);
}

QVariant SettingsStore::storedVariant(const QString &key) const {
    return unsaved_.contains(key) ? unsaved_.value(key) : stored_.value(key);
}

void SettingsStore::save() {
    const Result<void> saved = trySaving();
    if (!saved)
        takeBackUnconfirmed();
    // Whether it has worked is not known before the disk has answered.
    if (!saved || !file_.saving().isBusy())
        tellOf(saved);
}

void SettingsStore::takeBackUnconfirmed() {
    for (auto value = unconfirmed_.cbegin(); value != unconfirmed_.cend(); ++value)
        if (!unsaved_.contains(value.key()))
            unsaved_.insert(value.key(), value.value());
    unconfirmed_.clear();
}

void SettingsStore::tellOf(const Result<void> &saved) {
    const Saving before = std::exchange(saving_, saved ? Saving::Works : Saving::Failed);
    if (!saved && before == Saving::Works)
        emit problem(tr("The settings hold until VELM ends, but cannot be saved in %1: %2")
                         .arg(filePath(), saved.failure()->reason));
    const bool wasLeftInPlace = unreadFile_ && !unreadFile_->movedTo;
    if (saved && (before == Saving::Failed || wasLeftInPlace)) {
        if (wasLeftInPlace)
            unreadFile_.reset();
        emit savingWorksAgain();
    }
}

Result<void> SettingsStore::trySaving() {
    const QDeadlineTimer deadline(patience);
    // Another start may have moved it aside, or a person: what it held is in use.
    if (isMissing(filePath()))
        saveStoredAnew();
    IniFile::Outcome outcome = file_.change(unsaved_, deadline);
    if (IniFile::isDamaged(outcome)) {
        if (Result<void> kept = keepDamagedFileAside(); !kept)
            return kept;
        outcome = file_.change(unsaved_, deadline);
    }
    if (const IniFile::Trouble *trouble = outcome.failure())
        return trouble->failure;
    stored_ = *outcome;
    unconfirmed_.insert(std::exchange(unsaved_, {}));
    if (!file_.saving().isBusy())
        unconfirmed_.clear();
    return {};
}

// A person may have edited the file since it was last read. What it held before is still in use,
// and goes into the new file.
Result<void> SettingsStore::keepDamagedFileAside() {
    const Result<QString> copy = file_.moveAside();
    if (const Failure *failure = copy.failure())
        return Failure{
            tr("The damaged file there could not be moved aside: %1").arg(failure->reason),
            failure->systemError};
    saveStoredAnew();
    emit keptAside(keptAsideWords(*copy));
    return {};
}

void SettingsStore::saveStoredAnew() {
    for (auto value = stored_.cbegin(); value != stored_.cend(); ++value)
        if (value->isValid() && !unsaved_.contains(value.key()))
            unsaved_.insert(value.key(), value.value());
}

QMap<QString, SettingsStore::VisibleValue> SettingsStore::visibleValues() const {
    QMap<QString, VisibleValue> values;
    const QStringList keys = stored_.keys() + unsaved_.keys() + defaults_.keys();
    for (const QString &key : keys)
        values.insert(key, {stringValue(key), stringListValue(key)});
    return values;
}

void SettingsStore::announceChanges() {
    const QMap<QString, VisibleValue> before = std::exchange(announced_, visibleValues());
    const QMap<QString, VisibleValue> now = announced_;
    for (auto value = now.begin(); value != now.end(); ++value)
        if (!before.contains(value.key()) || before.value(value.key()) != value.value())
            emit valueChanged(value.key());
    for (auto value = before.begin(); value != before.end(); ++value)
        if (!now.contains(value.key()))
            emit valueChanged(value.key());
}
