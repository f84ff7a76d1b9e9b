// SPDX-License-Identifier: MIT
// Connecting to a bus, and a call, can stand still for as long as the other side likes. Both are done on a
// thread of the pool; the one that has the windows waits no longer than it wants to.
#include "platform/AppleEvent.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QThreadPool>
#include <QUrl>
#include <atomic>
#include <memory>

#include "platform/Machine.h"

namespace {

constexpr int kTakingOver = 2000;  // ms that the bus gets for an event without an answer

enum class Stage { kUnderway, kDelivered, kFailed, kGivenUp };

/// Empty without a bus. Where no address is known the library would start a bus of its own to look for one.
QString SessionBusAddress() {
  const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
  if (!QFileInfo::exists(socket)) return "";
  return "unix:path=" + QString::fromLatin1(QUrl::toPercentEncoding(socket, "/", "~"));
}

QDBusMessage MessageOf(const AppleEvent& event) {
  const QString signature = QString::fromStdString(event.signature);
  QDBusMessage message = QDBusMessage::createMethodCall(
      "org.tessarine." + signature, "/org/tessarine/" + signature,
      "org.tessarine." + QString::fromStdString(event.eventClass), QString::fromStdString(event.eventID));
  message.setAutoStartService(false);
  message << QVariantMap{{"----", QString::fromStdString(event.directParameter)}};
  return message;
}

bool Deliver(const QString& address, const AppleEvent& event, int timeout, const std::atomic<Stage>& stage) {
  static std::atomic<int> connections = 0;
  const QString name = "org.tessarine.events-" + QString::number(++connections);
  bool delivered = false;
  {
    const QDBusConnection bus = QDBusConnection::connectToBus(address, name);
    const QDBusMessage message = MessageOf(event);
    // An event that nobody waits for any more would come as a surprise.
    if (bus.isConnected() && bus.interface()->isServiceRegistered(message.service()) &&
        stage == Stage::kUnderway)
      delivered = timeout > 0 ? bus.call(message, QDBus::Block, timeout).type() == QDBusMessage::ReplyMessage
                              : bus.send(message);
  }
  QDBusConnection::disconnectFromBus(name);
  return delivered;
}

}  // namespace

bool AppleEvent::Send(int timeout) const {
  const QString address = SessionBusAddress();
  if (address.isEmpty()) return false;
  const auto stage = std::make_shared<std::atomic<Stage>>(Stage::kUnderway);
  QThreadPool::globalInstance()->start([address, event = *this, timeout, stage] {
    *stage = Deliver(address, event, timeout, *stage) ? Stage::kDelivered : Stage::kFailed;
  });
  Machine& machine = Machine::Current();
  const std::int64_t end = machine.Ticks() + (timeout > 0 ? timeout : kTakingOver) * 60 / 1000;
  while (*stage == Stage::kUnderway && machine.Ticks() < end) machine.DoEvents(10);
  Stage reached = Stage::kUnderway;
  stage->compare_exchange_strong(reached, Stage::kGivenUp);
  return reached == Stage::kDelivered;
}
