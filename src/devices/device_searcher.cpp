#include "devices/device_searcher.h"

#include "base/Log.h"
#include "base/MainQueue.h"
#include "base/TextLines.h"
#include "base/WorkState.h"
#include "devices/DeviceListModel.h"
#include "devices/DeviceListView.h"
#include "image/FileLoading.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "tool/ScriptedMiniPro.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>

#include <chrono>

namespace {

constexpr qsizetype expectedRuns = 10;
constexpr std::chrono::seconds silencePatience{2};

} // namespace

device_searcher::device_searcher(SettingsStore &settings, Log &log, MainQueue &queue,
                                 std::function<void()> beep, WorkState &work, QObject *parent)
    : QObject(parent),
      defaults(settings),
      log_(log),
      queue_(queue),
      beep_(std::move(beep)),
      work_(work) {
    retainArray.reserve(expectedRuns);
    silence_.setInterval(silencePatience);
    connect(&silence_, &QTimer::timeout, this, &device_searcher::noticeSilence);
}

device_searcher::~device_searcher() = default;

void device_searcher::connectPanel() {
    model_ = new DeviceListModel(*this);
    tableview->setModel(model_);
    connect(tableview, &DeviceListView::doubleClickedAnywhere, this,
            [this] { doubleClick(tableview); });
    connect(tableview, &DeviceListView::enterPressed, this, &device_searcher::confirmSelection);
}

void device_searcher::list(QObject *) {
    if (!work_.isIdle()) {
        if (!isSearching())
            emit remark(tr("The programmer tool is running: wait for its end."));
        return;
    }
    auto *run = new ScriptedMiniPro(defaults, log_, queue_, this);
    retainArray.append(run);
    const QString term = devicesearchterm->text();
    if (term.isEmpty()) {
        beep_();
        emit remark(tr("Enter a part of the device's name."));
        devicesearchterm->setFocus(Qt::OtherFocusReason);
        return;
    }
    runSearch(*run, term);
    takeResults();
    remarkOnResults(*run);
}

void device_searcher::runSearch(ScriptedMiniPro &run, const QString &term) {
    work_.begin(Work::Searching);
    current_ = &run;
    outputSeen_ = 0;
    silence_.start();
    emit remark(tr("Searching\u2026"));
    emit searchRunningChanged(true);
    run.list(term);
    silence_.stop();
    current_ = nullptr;
    work_.end();
    emit searchRunningChanged(false);
}

void device_searcher::stop() {
    if (!current_)
        return;
    work_.stop();
    current_->stop();
}

// Without a programmer the tool asks on its input which one is meant, and waits for ever.
void device_searcher::noticeSilence() {
    const qsizetype output = current_ ? current_->collectedOutput().size() : 0;
    if (current_ && output == outputSeen_)
        emit remark(tr("The tool is silent: it may be waiting for a programmer. Connect one, or "
                       "stop the search."));
    outputSeen_ = output;
}

void device_searcher::takeResults() {
    const auto loaded =
        loadUtf8Text(resolvedPathOf(defaults, settingsKeys::temp_search_results_file));
    QList<QStringView> pieces;
    if (const auto *text = std::get_if<QString>(&loaded))
        pieces = linesOf(*text);
    log_.write(QStringLiteral("list has returned:%1").arg(pieces.size()));
    QStringList names;
    names.reserve(pieces.size());
    for (const QStringView piece : std::as_const(pieces))
        if (!piece.isEmpty())
            names.append(piece.toString());
    dataArray = names;
    log_.write(QStringLiteral("dataArray has:%1").arg(dataArray->size()));
    model_->reloadData();
}

void device_searcher::remarkOnResults(const ScriptedMiniPro &run) {
    const qsizetype count = dataArray->size();
    if (run.stopRequested()) {
        emit remark(tr("The search was stopped."));
    } else if (count > 0) {
        emit remark(foundRemark());
    } else if (!run.started()) {
        emit remark(tr("The programmer tool could not be started: %1").arg(run.startFailure()));
    } else if (!run.collectedOutput().trimmed().isEmpty()) {
        emit remark(run.collectedOutput().trimmed().section(QLatin1Char('\n'), -1));
    } else {
        emit remark(tr("No device's name holds this term."));
    }
}

QString device_searcher::foundRemark() const {
    const qsizetype count = dataArray->size();
    return count == 1 ? tr("1 device found.")
                      : tr("%1 devices found.").arg(QLocale().toString(count));
}

std::optional<QString> device_searcher::selectedItem(QObject *) const {
    const QModelIndexList selected = tableview->selectionModel()->selectedRows();
    if (selected.isEmpty())
        return std::nullopt;
    return dataArray->at(selected.first().row());
}

void device_searcher::confirmSelection() {
    if (selectedItem(tableview)) {
        OKButton->click();
        return;
    }
    emit remark(tr("Select a device first."));
    connect(
        tableview->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        [this] { emit remark(foundRemark()); }, Qt::SingleShotConnection);
}

void device_searcher::doubleClick(QObject *) {
    log_.write(QStringLiteral("doubleClick:"));
    queue_.async([button = QPointer<QPushButton>(OKButton)] {
        if (button)
            button->click();
    });
}

quint64 device_searcher::numberOfRowsInTableView(QObject *) const {
    return dataArray ? quint64(dataArray->size()) : 0;
}

QString device_searcher::tableView_objectValueForTableColumn_row(QObject *, const QString &,
                                                                 qint64 row) const {
    return dataArray->at(row);
}

bool device_searcher::tableView_shouldEditTableColumn_row(QObject *, const QString &,
                                                          qint64) const {
    return false;
}

bool device_searcher::tableView_shouldSelectRow(QObject *, qint64) const {
    return true;
}

bool device_searcher::tableView_shouldSelectTableColumn(QObject *, const QString &) const {
    return false;
}
