#include "platform/linux/dbus/DBusInstanceHost.h"

#include <gmock/gmock.h>

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QProcess>
#include <QTest>
#include <QVariantMap>
#include <QXmlStreamReader>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr const char* kService = "app.nimbrel.Nimbrel";
constexpr const char* kPath = "/app/nimbrel/Nimbrel";
constexpr const char* kSearchPath = "/app/nimbrel/Nimbrel/SearchProvider";
constexpr const char* kSearch = "org.gnome.Shell.SearchProvider2";

/// Another process, as far as the bus can tell.
class Caller final {
 public:
  explicit Caller(const QString& name = u"caller"_s)
      : name_(name), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {}
  ~Caller() { QDBusConnection::disconnectFromBus(name_); }
  Caller(const Caller&) = delete;
  Caller& operator=(const Caller&) = delete;

  QDBusPendingCall start(const QString& method, const QVariantList& arguments = {}, const char* path = kPath,
                         const char* interface = kService) {
    auto call = QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(path),
                                               QLatin1String(interface), method);
    call.setArguments(arguments);
    return bus_.asyncCall(call);
  }
  QDBusMessage call(const QString& method, const QVariantList& arguments = {}, const char* path = kPath,
                    const char* interface = kService) {
    QDBusPendingCall pending = start(method, arguments, path, interface);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }));
    return pending.reply();
  }
  [[nodiscard]] QDBusConnection& bus() { return bus_; }

 private:
  const QString name_;
  QDBusConnection bus_;
};

bool isAnswered(const QDBusMessage& message) {
  return message.type() == QDBusMessage::ReplyMessage;
}
bool call(const QString& method, const QVariantList& arguments = {}) {
  return isAnswered(Caller().call(method, arguments));
}
bool askToShow() {
  return call(u"Show"_s);
}

TEST(DBusInstanceHost, IsTheFirstAndShowsWhenAsked) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  int shown = 0;
  host.setRequests({.show = [&] { ++shown; }});
  EXPECT_TRUE(askToShow());
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == 1; }));
}

TEST(DBusInstanceHost, KeepsARequestThatComesTooEarly) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_TRUE(askToShow());
  int shown = 0;
  host.setRequests({.show = [&] { ++shown; }});
  EXPECT_EQ(shown, 1);
}

TEST(DBusInstanceHost, GivesTheNameBackWhenItGoes) {
  {
    DBusInstanceHost host;
    ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  }
  EXPECT_FALSE(askToShow());
}

TEST(DBusInstanceHost, HandsUrlsOver) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QStringList opened;
  host.setRequests({.openUrls = [&](const QStringList& urls) { opened += urls; }});
  const QStringList both{u"nimbrel://add?text=a"_s, u"nimbrel://add?text=b"_s};
  EXPECT_TRUE(call(u"OpenUrls"_s, {both}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return opened == both; }));
  EXPECT_FALSE(call(u"OpenUrls"_s, {7}));
}

TEST(DBusInstanceHost, KeepsUrlsThatComeTooEarlyButNotWithoutEnd) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_TRUE(call(u"OpenUrls"_s, {QStringList{u"nimbrel://add?text=a"_s}}));
  for (int i = 0; i < 20; ++i)
    EXPECT_TRUE(call(u"OpenUrls"_s, {QStringList{QString(1'000'000, u'x')}}));
  qsizetype characters = 0;
  QStringList opened;
  host.setRequests({.openUrls = [&](const QStringList& urls) {
    opened = urls;
    for (const QString& url : urls)
      characters += url.size();
  }});
  EXPECT_EQ(opened.value(0), u"nimbrel://add?text=a");
  EXPECT_LE(characters, 8'000'000);
}

TEST(DBusInstanceHost, EndsWhenAskedAlsoBeforeAnybodyListens) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_TRUE(call(u"Quit"_s));
  int ended = 0;
  host.setRequests({.quit = [&] { ++ended; }});
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(call(u"Quit"_s));
  EXPECT_TRUE(QTest::qWaitFor([&] { return ended == 2; }));
}

/// Answers every intent at once with the same.
InstanceRequests answering(const IntentReply& reply, QList<IntentCall>* calls = nullptr) {
  InstanceRequests requests;
  requests.perform = [reply, calls](const IntentCall& asked, const IntentAnswer& answer) {
    if (calls) calls->append(asked);
    answer(reply);
  };
  return requests;
}

TEST(DBusInstanceHost, CarriesIntentsAndTheirAnswers) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentCall> calls;
  host.setRequests(answering({.message = u"hecho"_s, .texts = {u"a"_s, u"b"_s}, .paused = true}, &calls));
  Caller caller;
  const QStringList texts{u"a"_s, u"b"_s};
  EXPECT_EQ(caller.call(u"CopyLatestClip"_s).arguments(), QVariantList{u"hecho"_s});
  EXPECT_EQ(caller.call(u"SearchHistory"_s, {u"x y"_s}).arguments(), (QVariantList{texts, u"hecho"_s}));
  EXPECT_EQ(caller.call(u"ToggleCapture"_s).arguments(), (QVariantList{true, u"hecho"_s}));
  EXPECT_EQ(caller.call(u"PasteFromCollection"_s, {u"casa"_s}).arguments(), QVariantList());
  EXPECT_EQ(caller.call(u"ListCollections"_s).arguments(), (QVariantList{texts}));
  EXPECT_EQ(calls, (QList<IntentCall>{{Intent::copyLatestClip, {}},
                                      {Intent::searchHistory, u"x y"_s},
                                      {Intent::toggleCapture, {}},
                                      {Intent::pasteFromCollection, u"casa"_s},
                                      {Intent::listCollections, {}}}));
}

TEST(DBusInstanceHost, NamesErrors) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  host.setRequests(answering({.error = u"emptyHistory"_s, .message = u"No hay."_s}));
  const QDBusMessage answer = Caller().call(u"CopyLatestClip"_s);
  EXPECT_EQ(answer.errorName(), u"app.nimbrel.Nimbrel.Error.EmptyHistory");
  EXPECT_EQ(answer.errorMessage(), u"No hay.");
}

TEST(DBusInstanceHost, IsUnavailableWhileNobodyCarriesIntentsOut) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  EXPECT_EQ(Caller().call(u"CopyLatestClip"_s).errorName(), u"app.nimbrel.Nimbrel.Error.Unavailable");
}

TEST(DBusInstanceHost, AnswersLateAndInAnyOrder) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentAnswer> waiting;
  InstanceRequests requests;
  requests.perform = [&](const IntentCall&, const IntentAnswer& answer) { waiting.append(answer); };
  host.setRequests(requests);
  Caller caller;
  auto first = caller.start(u"CopyLatestClip"_s);
  auto second = caller.start(u"CopyLatestClip"_s);
  ASSERT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 2; }));
  waiting.at(1)({.message = u"2"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return second.isFinished(); }));
  EXPECT_FALSE(first.isFinished());
  waiting.at(0)({.message = u"1"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return first.isFinished(); }));
  EXPECT_EQ(first.reply().arguments(), QVariantList{u"1"_s});
  EXPECT_EQ(second.reply().arguments(), QVariantList{u"2"_s});
}

TEST(DBusInstanceHost, RefusesMisspeltCalls) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentCall> calls;
  host.setRequests(answering({}, &calls));
  Caller caller;
  const QString invalid = QDBusError::errorString(QDBusError::InvalidArgs);
  EXPECT_EQ(caller.call(u"SearchHistory"_s).errorName(), invalid);
  EXPECT_EQ(caller.call(u"SearchHistory"_s, {7}).errorName(), invalid);
  EXPECT_EQ(caller.call(u"SearchHistory"_s, {u"a"_s, u"b"_s}).errorName(), invalid);
  EXPECT_EQ(caller.call(u"CopyLatestClip"_s, {u"a"_s}).errorName(), invalid);
  EXPECT_FALSE(isAnswered(caller.call(u"Frob"_s)));
  EXPECT_FALSE(isAnswered(caller.call(u"CopyLatestClip"_s, {}, kPath, "org.example.Other")));
  EXPECT_FALSE(isAnswered(caller.call(u"CopyLatestClip"_s, {}, "/app/nimbrel/Nimbrel/x")));
  EXPECT_FALSE(isAnswered(caller.call(u"CopyLatestClip"_s, {}, kSearchPath)));
  EXPECT_TRUE(calls.isEmpty());
}

TEST(DBusInstanceHost, OneWhoFloodsGetsErrorsAndOthersAnswers) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentCall> calls;
  host.setRequests(answering({}, &calls));
  Caller flooder(u"flooder"_s);
  QList<QDBusPendingCall> pending;
  for (int i = 0; i < 1000; ++i)
    pending.append(flooder.start(u"CopyLatestClip"_s));
  EXPECT_TRUE(isAnswered(Caller().call(u"CopyLatestClip"_s)));
  int refused = 0;
  for (QDBusPendingCall& one : pending) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return one.isFinished(); }));
    if (one.error().type() == QDBusError::LimitsExceeded) ++refused;
  }
  EXPECT_GT(refused, 0);
  EXPECT_EQ(calls.size(), 1001 - refused);
}

TEST(DBusInstanceHost, RefusesMoreThanMayWait) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentCall> calls;
  host.setRequests(answering({}, &calls));
  Caller caller;
  const QDBusMessage answer = caller.call(u"SearchHistory"_s, {QString(20'000'000, u'x')});
  EXPECT_EQ(answer.errorName(), QDBusError::errorString(QDBusError::LimitsExceeded));
  EXPECT_TRUE(calls.isEmpty());
  const QStringList urls{QString(9'000'000, u'x')};
  EXPECT_FALSE(isAnswered(caller.call(u"OpenUrls"_s, {urls})));
}

TEST(DBusInstanceHost, RefusesMoreThanMayBeWithoutAnAnswer) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  QList<IntentAnswer> waiting;
  InstanceRequests requests;
  requests.perform = [&](const IntentCall&, const IntentAnswer& answer) { waiting.append(answer); };
  host.setRequests(requests);
  Caller caller;
  QList<QDBusPendingCall> pending;
  for (int i = 0; i < BusObject::kMaxCalls + 1; ++i)
    pending.append(caller.start(u"CopyLatestClip"_s));
  ASSERT_TRUE(QTest::qWaitFor([&] { return pending.last().isFinished(); }));
  EXPECT_EQ(pending.last().error().type(), QDBusError::LimitsExceeded);
  EXPECT_EQ(waiting.size(), BusObject::kMaxCalls);
  for (const IntentAnswer& answer : std::exchange(waiting, {}))
    answer({});
  ASSERT_TRUE(QTest::qWaitFor([&] { return pending.first().isFinished(); }));
  // What has been answered takes no room any more.
  pending.first() = caller.start(u"CopyLatestClip"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return waiting.size() == 1; }));
}

TEST(DBusInstanceHost, GoesWhileCallsAreWithoutAnAnswer) {
  IntentAnswer waiting;
  Caller caller;
  {
    DBusInstanceHost host;
    ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
    InstanceRequests requests;
    requests.perform = [&](const IntentCall&, const IntentAnswer& answer) { waiting = answer; };
    host.setRequests(requests);
    for (int i = 0; i < 20; ++i)
      caller.start(u"CopyLatestClip"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return static_cast<bool>(waiting); }));
    host.setRequests({});
    waiting = {};
  }
  EXPECT_FALSE(isAnswered(caller.call(u"CopyLatestClip"_s)));
}

class Heard final : public QObject {
  Q_OBJECT
 public Q_SLOTS:
  void switched(bool paused) { states.append(paused); }

 public:
  QList<bool> states;
};

TEST(DBusInstanceHost, AnnouncesWhenCaptureIsPaused) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  Caller caller;
  Heard heard;
  ASSERT_TRUE(caller.bus().connect(QLatin1String(kService), QLatin1String(kPath), QLatin1String(kService),
                                   u"CaptureSwitched"_s, &heard, SLOT(switched(bool))));
  const auto paused = [&] {
    const auto reply = caller.call(u"Get"_s, {QString::fromLatin1(kService), u"CapturePaused"_s}, kPath,
                                   "org.freedesktop.DBus.Properties");
    return reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
  };
  EXPECT_FALSE(paused());
  host.announceCapture(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return heard.states == QList<bool>{true}; }));
  EXPECT_TRUE(paused());
}

TEST(DBusInstanceHost, TellsWhatItCanDo) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  const auto described = [](const char* path) {
    return Caller()
        .call(u"Introspect"_s, {}, path, "org.freedesktop.DBus.Introspectable")
        .arguments()
        .value(0)
        .toString();
  };
  const QString program = described(kPath);
  for (const auto* name : {"Show", "ShowCollections", "OpenUrls", "Quit", "CopyLatestClip", "SearchHistory",
                           "ToggleCapture", "PasteFromCollection", "ListCollections", "CaptureSwitched"})
    EXPECT_TRUE(program.contains(u"name=\"%1\""_s.arg(QLatin1String(name)))) << name;
  QXmlStreamReader reader(program);
  while (!reader.atEnd())
    reader.readNext();
  EXPECT_FALSE(reader.hasError()) << qPrintable(program);
  EXPECT_TRUE(described(kSearchPath).contains(u"org.gnome.Shell.SearchProvider2"));
}

TEST(DBusInstanceHost, AnswersTheDesktopsSearch) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  Caller caller;
  const auto search = [&](const QString& method, const QVariantList& arguments) {
    return caller.call(method, arguments, kSearchPath, kSearch);
  };
  const QStringList none;
  EXPECT_EQ(search(u"GetInitialResultSet"_s, {QStringList{u"pan"_s}}).arguments(), (QVariantList{none}));
  QStringList looked;
  QStringList chosen;
  QStringList shown;
  InstanceRequests requests;
  requests.suggest = [&](const QStringList& terms, const auto& found) {
    looked = terms;
    found({u"id"_s});
  };
  requests.describe = [](const QStringList& ids) { return QList<ClipSuggestion>{{ids.first(), u"pan"_s}}; };
  requests.choose = [&](const QString& id) { chosen.append(id); };
  requests.show = [&] { shown.append(u"panel"_s); };
  requests.showSearch = [&](const QString& text) { shown.append(text); };
  host.setRequests(requests);
  const QStringList ids{u"id"_s};
  const QStringList terms{u"pan"_s, u"duro"_s};
  EXPECT_EQ(search(u"GetInitialResultSet"_s, {terms}).arguments(), (QVariantList{ids}));
  EXPECT_EQ(looked, terms);
  EXPECT_EQ(search(u"GetSubsearchResultSet"_s, {ids, QStringList{u"p"_s}}).arguments(), (QVariantList{ids}));
  EXPECT_EQ(looked, QStringList{u"p"_s});
  const QDBusMessage metas = search(u"GetResultMetas"_s, {ids});
  ASSERT_EQ(metas.signature(), u"aa{sv}");
  const auto described = qdbus_cast<QList<QVariantMap>>(metas.arguments().first());
  ASSERT_EQ(described.size(), 1);
  EXPECT_EQ(described.first().value(u"id"_s), u"id"_s);
  EXPECT_EQ(described.first().value(u"name"_s), u"pan"_s);
  EXPECT_TRUE(isAnswered(search(u"ActivateResult"_s, {u"id"_s, terms, 0U})));
  EXPECT_EQ(chosen, ids);
  EXPECT_TRUE(isAnswered(search(u"LaunchSearch"_s, {terms, 0U})));
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown == QStringList{u"panel"_s, u"pan duro"_s}; }));
}

TEST(DBusInstanceClient, AsksTheInstance) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  const auto asked = [](const QStringList& arguments) {
    QProcess program;
    program.start(QStringLiteral(NIMBREL_PROGRAM), arguments);
    EXPECT_TRUE(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 20000));
    return std::pair(program.exitCode(), program.readAllStandardOutput() + program.readAllStandardError());
  };
  host.setRequests(answering({.message = u"hecho"_s, .texts = {u"a"_s}, .paused = true}));
  EXPECT_EQ(asked({u"search"_s, u"x"_s, u"--json"_s}),
            std::pair(0, "{\"message\":\"hecho\",\"texts\":[\"a\"]}\n"_ba));
  EXPECT_EQ(asked({u"toggle-capture"_s, u"--json"_s}),
            std::pair(0, "{\"message\":\"hecho\",\"paused\":true}\n"_ba));
  EXPECT_EQ(asked({u"copy-latest"_s}), std::pair(0, "hecho\n"_ba));
  EXPECT_EQ(asked({u"collections"_s}), std::pair(0, "a\n"_ba));
  host.setRequests(answering({.error = u"accessibilityRequired"_s, .message = u"Concede."_s}));
  EXPECT_EQ(asked({u"paste-from"_s, u"casa"_s}), std::pair(7, "nimbrel: Concede.\n"_ba));
  bool collections = false;
  host.setRequests({.showCollections = [&] { collections = true; }});
  EXPECT_EQ(asked({u"show"_s, u"--collections"_s}).first, 0);
  EXPECT_TRUE(collections);
}

TEST(DBusInstanceClient, WaitsForAProgramThatStarts) {
  DBusInstanceHost host;
  ASSERT_EQ(host.claim({}), InstanceHost::Claim::first);
  int refused = 0;
  InstanceRequests requests;
  requests.perform = [&](const IntentCall&, const IntentAnswer& answer) {
    if (++refused < 4) return answer({.error = u"unavailable"_s, .message = u"todavía no"_s});
    answer({.message = u"hecho"_s});
  };
  host.setRequests(requests);
  QProcess program;
  program.start(QStringLiteral(NIMBREL_PROGRAM), {u"copy-latest"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 20000));
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(refused, 4);
}

TEST(DBusInstanceClient, WithoutAnInstanceThereIsNobodyToAsk) {
  QProcess program;
  program.start(QStringLiteral(NIMBREL_PROGRAM), {u"copy-latest"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 20000));
  EXPECT_EQ(program.exitCode(), 3);
  program.start(QStringLiteral(NIMBREL_PROGRAM), {u"quit"_s});
  ASSERT_TRUE(QTest::qWaitFor([&] { return program.state() == QProcess::NotRunning; }, 20000));
  EXPECT_EQ(program.exitCode(), 0);
}

}  // namespace
}  // namespace nimbrel

#include "DBusInstanceHostTest.moc"
