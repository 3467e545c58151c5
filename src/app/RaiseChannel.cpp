// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/RaiseChannel.h"

#include <QLocalSocket>
#include <QUrl>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds answerPatience(3000);
const QByteArray answerText = QByteArrayLiteral("raised\n");

/// A request is one line: the path of the file to open, if any, which may hold line breaks itself.
QByteArray requestLine(const QString &binary) {
    return QUrl::toPercentEncoding(binary) + '\n';
}

QString binaryIn(const QByteArray &requestLine) {
    return QUrl::fromPercentEncoding(requestLine.trimmed());
}

} // namespace

RaiseServer::RaiseServer(const QString &socketPath, QObject *parent) : QObject(parent) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socketPath);
    connect(&server_, &QLocalServer::newConnection, this, &RaiseServer::greetCallers);
    server_.listen(socketPath);
}

void RaiseServer::greetCallers() {
    while (QLocalSocket *caller = server_.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        connect(caller, &QLocalSocket::readyRead, this, [this, caller] { answer(*caller); });
        answer(*caller);
    }
}

// Opening the file may take longer than the other waits for its answer.
void RaiseServer::answer(QLocalSocket &caller) {
    if (!caller.canReadLine())
        return;
    const QString binary = binaryIn(caller.readLine());
    caller.write(answerText);
    caller.flush();
    caller.disconnectFromServer();
    emit raiseRequested();
    if (!binary.isEmpty())
        emit openRequested(binary);
}

RaiseAnswer requestRaise(const QString &socketPath, const QString &binary) {
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(int(answerPatience.count())))
        return RaiseAnswer::Nobody;
    socket.write(requestLine(binary));
    if (socket.waitForReadyRead(int(answerPatience.count())) && socket.readAll() == answerText)
        return RaiseAnswer::Raised;
    return socket.state() == QLocalSocket::ConnectedState ? RaiseAnswer::Silence
                                                          : RaiseAnswer::Nobody;
}
