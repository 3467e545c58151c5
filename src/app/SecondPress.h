#pragma once

#include <QElapsedTimer>
#include <QString>

/// What is done only when it is asked for twice. The first press is answered by a sentence; the
/// second one counts for the very same thing alone, and only when it can no longer be the second
/// half of a double-click.
class SecondPress {
public:
    /// A press for \a thing, a text that stands for all that the sentence spoke of. True if it
    /// confirms an earlier one; false if the user has to be asked, or asked already just now.
    bool confirms(const QString &thing);
    /// The sentence is no longer there, or no longer true: the next press is a first one.
    void withdraw();

private:
    QString asked_;
    QElapsedTimer sinceAsked_;
};
