// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "start/RaiseChannel.h"

#include <QLocalSocket>
#include <QUrl>

#include <chrono>
#include <sys/socket.h>
#include <unistd.h>

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

bool isOfThisUser(const QLocalSocket &other) {
    const auto socket = int(other.socketDescriptor());
#ifdef Q_OS_LINUX
    struct ucred facts = {};
    socklen_t size = sizeof facts;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &facts, &size) == 0 &&
           facts.uid == ::geteuid();
#else
    uid_t user = 0;
    gid_t group = 0;
    return ::getpeereid(socket, &user, &group) == 0 && user == ::geteuid();
#endif
}

RaiseAnswer ask(QLocalSocket &socket, const QString &name, const QString &binary) {
    socket.connectToServer(name);
    if (!socket.waitForConnected(int(answerPatience.count())))
        return RaiseAnswer::Nobody;
    if (!isOfThisUser(socket))
        return RaiseAnswer::Silence;
    socket.write(requestLine(binary));
    if (socket.waitForReadyRead(int(answerPatience.count())) && socket.readAll() == answerText)
        return RaiseAnswer::Raised;
    return socket.state() == QLocalSocket::ConnectedState ? RaiseAnswer::Silence
                                                          : RaiseAnswer::Nobody;
}

} // namespace

RaiseServer::RaiseServer(const RaiseAddress &address, QObject *parent) : QObject(parent) {
    byPath_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(address.path);
    listen(byPath_, address.path);
    if (address.name.isEmpty())
        return;
    byName_.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    listen(byName_, address.name);
}

void RaiseServer::listen(QLocalServer &server, const QString &name) {
    connect(&server, &QLocalServer::newConnection, this, [&] { greetCallers(server); });
    server.listen(name);
}

void RaiseServer::greetCallers(QLocalServer &server) {
    while (QLocalSocket *caller = server.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        if (!isOfThisUser(*caller)) {
            caller->abort();
            continue;
        }
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

RaiseAnswer requestRaise(const RaiseAddress &address, const QString &binary) {
    QLocalSocket byPath;
    const RaiseAnswer answer = ask(byPath, address.path, binary);
    if (answer != RaiseAnswer::Nobody || address.name.isEmpty())
        return answer;
    QLocalSocket byName;
    byName.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    return ask(byName, address.name, binary);
}
