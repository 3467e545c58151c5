#include "app/RaiseChannel.h"

#include <QLocalSocket>

namespace {

constexpr int patience = 3000; // milliseconds
const QByteArray answerText = QByteArrayLiteral("raised\n");

} // namespace

RaiseServer::RaiseServer(const QString &socketPath, QObject *parent) : QObject(parent) {
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(socketPath);
    connect(&m_server, &QLocalServer::newConnection, this, &RaiseServer::answer);
    m_server.listen(socketPath);
}

void RaiseServer::answer() {
    while (QLocalSocket *caller = m_server.nextPendingConnection()) {
        connect(caller, &QLocalSocket::disconnected, caller, &QObject::deleteLater);
        emit raiseRequested();
        caller->write(answerText);
        caller->disconnectFromServer();
    }
}

bool requestRaise(const QString &socketPath) {
    QLocalSocket socket;
    socket.connectToServer(socketPath, QIODevice::ReadOnly);
    if (!socket.waitForConnected(patience))
        return false;
    return socket.waitForReadyRead(patience) && socket.readAll() == answerText;
}
