// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QObject>

class ScriptedMiniPro;

/// Those runs that are over and whose leftovers still print: something that the tool started and
/// did not end.
class LatePrinters final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Follows \a run as long as it lives.
    void watch(ScriptedMiniPro *run);
    /// True while there are any.
    bool any() const { return !printing_.isEmpty(); }
    /// Ends them all.
    void stop();

signals:
    /// any() has become \a some.
    void anyChanged(bool some);

private:
    void take(ScriptedMiniPro *run, bool printing);

    QList<ScriptedMiniPro *> printing_;
};
