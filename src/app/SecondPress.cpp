#include "app/SecondPress.h"

#include <QApplication>

bool SecondPress::confirms(const QString &thing) {
    if (asked_ != thing) {
        asked_ = thing;
        sinceAsked_.start();
        return false;
    }
    if (sinceAsked_.elapsed() < QApplication::doubleClickInterval())
        return false;
    withdraw();
    return true;
}

void SecondPress::withdraw() {
    asked_.clear();
}
