#include "app/SecondPress.h"

#include <QApplication>

namespace {

const QString topic = QStringLiteral("press");

} // namespace

bool SecondPress::confirms(const Question &question) {
    const bool asked = asked_ == question.thing;
    if (asked && sinceAsked_.elapsed() >= QApplication::doubleClickInterval()) {
        withdraw();
        return true;
    }
    if (!asked) {
        asked_ = question.thing;
        sinceAsked_.start();
    }
    line_->setNotice(topic, MessageLine::Severity::Warning, question.sentence, question.action);
    return false;
}

void SecondPress::withdraw() {
    asked_.clear();
    if (line_)
        line_->clearNotice(topic);
}
