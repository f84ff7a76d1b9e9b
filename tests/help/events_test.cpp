// SPDX-License-Identifier: MIT
// The two events, over a real bus to a viewer of the case's own, and what happens where nobody listens.
#include <QtDBus>
#include <csignal>
#include <deque>

#include "help/HelpTest.h"
#include "platform/AppleEvent.h"

/// The program that takes the events, on a connection of its own.
class Viewer : public QDBusVirtualObject {
 public:
  explicit Viewer(const QString& address) : fBus(QDBusConnection::connectToBus(address, "viewer")) {
    EXPECT_TRUE(fBus.registerVirtualObject("/org/tessarine/ombl", this) &&
                fBus.registerService("org.tessarine.ombl"));
  }
  ~Viewer() override { QDBusConnection::disconnectFromBus("viewer"); }

  QString introspect(const QString& /*path*/) const override { return ""; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const auto fields = qdbus_cast<QVariantMap>(message.arguments().value(0));
    QString event = message.interface() + "." + message.member() + " " + message.signature();
    for (const QString& key : fields.keys()) event += " " + key + "=" + fields[key].toString();
    if (message.isReplyRequired()) event += ", answer wanted";
    fEvents.push_back(event.toStdString());
    if (fRefuses) bus.send(message.createErrorReply(QDBusError::Failed, "no"));
    if (!fSilent && !fRefuses && message.isReplyRequired()) bus.send(message.createReply());
    return true;
  }
  /// The next event with all its fields.
  std::string Next() {
    if (!QTest::qWaitFor([this] { return !fEvents.empty(); }, 20'000)) return "none";
    const std::string event = fEvents.front();
    fEvents.pop_front();
    return event;
  }

  std::deque<std::string> fEvents;
  bool fRefuses = false, fSilent = false;

 private:
  QDBusConnection fBus;
};

class Events : public HelpTest {
 protected:
  Events() {
    const QString folder = QString::fromStdString(fTree.Path());
    // The bus knows how to start a viewer, and must not be made to.
    const std::string service = "[D-BUS Service]\nName=org.tessarine.ombl\nExec=/usr/bin/touch ";
    fTree.Write("data/dbus-1/services/ombl.service", service + fTree.Path("started") + "\n");
    ::setenv("XDG_DATA_HOME", fTree.Path("data").c_str(), 1);
    fBus.start("dbus-daemon", {"--session", "--nofork", "--print-address", "--address=unix:dir=" + folder});
    fBus.waitForReadyRead();
    fAddress = fBus.readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", fAddress.toLatin1());
    fMachine.fPump = [this] { WaitForBus(); };
    fHelp.Init("Viewer", fTree.Path("media/Guide.hlp"), "");
    for (const char c : "System" + fTree.Path("media/Guide.hlp")) fDocument += c == '/' ? ':' : c;
  }
  ~Events() override {
    fBus.kill();
    fBus.waitForFinished();
    QThreadPool::globalInstance()->waitForDone();
  }
  /// The clock doesn't pass fLatest, however slow the bus is.
  void WaitForBus() {
    fToolkit.DoEvents(1);
    fMachine.fMilliseconds = std::min(fMachine.fMilliseconds, fLatest);
  }
  std::string Opening(const std::string& topic) const {
    return "org.tessarine.Help.TPID a{sv} ----=" + fDocument + topic + ", answer wanted";
  }

  QProcess fBus;
  QString fAddress;
  std::string fDocument;
  std::int64_t fLatest = 0;
};

TEST_F(Events, TheViewerIsToldWhatToShowAndToQuitAndHasTenSecondsToAnswer) {
  Viewer viewer(fAddress);
  fLatest = 2000;
  fHelp.Show("a topic/\u00E9");
  EXPECT_EQ(viewer.Next(), Opening("/a topic/\u00E9"));
  EXPECT_EQ(fMachine.fLaunched, std::vector{fTree.Path("media/Viewer.app")});
  fHelp.SetTopic("");
  fHelp.Quit();
  EXPECT_EQ(viewer.Next(), "org.tessarine.Help.CMDS a{sv} ----=OmbrelWindow:Quit");
  const AppleEvent event{"ombl", "Help", "TPID", "text"};
  EXPECT_TRUE(event.Send(1000));
  viewer.fRefuses = true;
  EXPECT_FALSE(event.Send(1000));
  EXPECT_EQ(viewer.Next(), viewer.Next());
  viewer.fRefuses = false;
  viewer.fSilent = true;
  fMachine.fMilliseconds = 0;
  fMachine.fPump = [&] {
    fToolkit.DoEvents(0);
    if (viewer.fEvents.empty()) fMachine.fMilliseconds = 0;
  };
  fHelp.OpenDocument();
  EXPECT_EQ(viewer.Next(), Opening(""));
  EXPECT_EQ(fMachine.Ticks(), 600);
}

TEST_F(Events, WhereNobodyListensNothingStartsNothingWaitsAndNothingComesLate) {
  const AppleEvent event{"ombl", "Help", "TPID", "text"};
  EXPECT_FALSE(event.Send(1000) || event.Send(0));
  EXPECT_FALSE(fTree.Has("started"));
  Viewer viewer(fAddress);
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  EXPECT_FALSE(event.Send(0));
  fTree.Link("bus", fAddress.section('=', 1).section(',', 0, 0).toStdString());
  EXPECT_TRUE(event.Send(0)) << "the usual place of a session's bus";
  viewer.Next();
  EXPECT_EQ(fMachine.Ticks(), 0);

  ::kill(static_cast<pid_t>(fBus.processId()), SIGSTOP);
  fMachine.fPump = nullptr;
  fHelp.OpenDocument();
  fHelp.Quit();
  EXPECT_EQ(fMachine.Ticks(), 720) << "ten seconds, and two";
  ::kill(static_cast<pid_t>(fBus.processId()), SIGCONT);
  QThreadPool::globalInstance()->waitForDone();
  fMachine.fPump = [this] { WaitForBus(); };
  EXPECT_TRUE(event.Send(0)) << "the bus is back";
  EXPECT_EQ(viewer.Next(), "org.tessarine.Help.TPID a{sv} ----=text");
}
