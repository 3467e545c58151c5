#include "settings/SettingsStore.h"

#include "settings/IniCheck.h"
#include "settings/StoredValue.h"

#include <QSaveFile>
#include <QSettings>

#include <utility>

SettingsStore::SettingsStore(const QString &filePath, QObject *parent)
    : QObject(parent), filePath_(filePath) {
    if (isDamagedSettingsFile(filePath_))
        damagedCopyPath_ = moveAside(filePath_);
    reopen();
    announced_ = visibleValues();
}

SettingsStore::~SettingsStore() = default;

void SettingsStore::registerDefaults(const QVariantMap &defaults) {
    for (auto value = defaults.begin(); value != defaults.end(); ++value)
        defaults_.insert(value.key(), storedValue::encoded(value.value()));
    announceChanges();
}

bool SettingsStore::setValue(const QString &key, const QVariant &value) {
    if (!mayChange()) {
        emit changeRefused(key);
        return false;
    }
    keepDamagedFileAside();
    forgetEarlierErrors();
    file_->setValue(key, storedValue::encoded(value));
    save();
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
    if (const auto stored = storedValue::text(file_->value(key)))
        return *stored;
    return storedValue::text(defaults_.value(key)).value_or(QString());
}

bool SettingsStore::boolValue(const QString &key) const {
    if (const auto stored = storedValue::boolean(file_->value(key)))
        return *stored;
    return storedValue::boolean(defaults_.value(key)).value_or(false);
}

QStringList SettingsStore::stringListValue(const QString &key) const {
    if (file_->contains(key))
        return storedValue::list(file_->value(key));
    return storedValue::list(defaults_.value(key));
}

bool SettingsStore::contains(const QString &key) const {
    return file_->contains(key) || defaults_.contains(key);
}

QString SettingsStore::filePath() const {
    return filePath_;
}

QString SettingsStore::damagedCopyPath() const {
    return damagedCopyPath_;
}

void SettingsStore::reopen() {
    file_ = std::make_unique<QSettings>(filePath_, QSettings::IniFormat);
}

// A QSettings keeps its first error for ever, be it a line that it did not understand, and hides a
// later failure to write behind it. A new one shares the values not yet written with the one that
// it replaces, reads the file no second time and starts without an error.
void SettingsStore::forgetEarlierErrors() {
    file_->sync();
    if (file_->status() != QSettings::NoError)
        reopen();
}

// A person may have edited the file since it was last read; the next write must not drop what they
// got wrong.
void SettingsStore::keepDamagedFileAside() {
    if (!isDamagedSettingsFile(filePath_))
        return;
    const QString copy = moveAside(filePath_);
    if (!copy.isEmpty())
        emit problem(tr("The settings file could not be read; it is kept as %1.").arg(copy));
}

void SettingsStore::save() {
    file_->sync();
    const bool failed = file_->status() == QSettings::AccessError;
    const Saving before = std::exchange(saving_, failed ? Saving::Failed : Saving::Works);
    if (failed && before == Saving::Works)
        emit problem(tr("The settings hold until VELM ends, but cannot be saved in %1: %2")
                         .arg(filePath_, whyNotSaved()));
}

QString SettingsStore::whyNotSaved() const {
    QSaveFile trial(filePath_);
    if (!trial.open(QIODevice::WriteOnly))
        return trial.errorString();
    trial.cancelWriting();
    return tr("the file could not be written");
}

QMap<QString, SettingsStore::VisibleValue> SettingsStore::visibleValues() const {
    QMap<QString, VisibleValue> values;
    const QStringList keys = file_->allKeys() + defaults_.keys();
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
