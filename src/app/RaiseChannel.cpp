#include "app/RaiseChannel.h"

#include <QLocalSocket>

namespace {

constexpr int patience = 3000; // milliseconds
const QByteArray answerText = QByteArrayLiteral("raised\n");

} // namespace

RaiseServer::RaiseServer(const QString &socketPath, QObject *parent) : QObject(parent) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socketPath);
    connect(&server_, &QLocalServer::newConnection, this, &RaiseServer::answer);
    server_.listen(socketPath);
}

void RaiseServer::answer() {
    while (QLocalSocket *caller = server_.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        emit raiseRequested();
        caller->write(answerText);
        caller->disconnectFromServer();
    }
}

RaiseAnswer requestRaise(const QString &socketPath) {
    QLocalSocket socket;
    socket.connectToServer(socketPath, QIODevice::ReadOnly);
    if (!socket.waitForConnected(patience))
        return RaiseAnswer::Nobody;
    if (socket.waitForReadyRead(patience) && socket.readAll() == answerText)
        return RaiseAnswer::Raised;
    return socket.state() == QLocalSocket::ConnectedState ? RaiseAnswer::Silence
                                                          : RaiseAnswer::Nobody;
}
