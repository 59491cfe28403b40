#include "platform/linux/dbus/DBusInstanceHost.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/common/CarriedText.h"
#include "platform/linux/dbus/BusNames.h"

namespace nimbrel {
namespace {

/// The second start waits for the first to answer, but not for one that hangs.
constexpr int kCallTimeoutMilliseconds = 5000;
constexpr int kAttempts = 10;
constexpr unsigned long kAttemptPause = 100;

/// The longest text that the panel is asked to look for.
constexpr qsizetype kMaxSearch = 4096;

/// A method that asks something of the program itself.
struct Control {
  const char* name;
  void (*ask)(InstanceInbox& inbox, const BusCall& call);
};
constexpr std::array kControls{
    Control{"Show", [](InstanceInbox& inbox, const BusCall&) { inbox.askToShow(); }},
    Control{"ShowCollections", [](InstanceInbox& inbox, const BusCall&) { inbox.askForCollections(); }},
    Control{"OpenUrls", [](InstanceInbox& inbox,
                           const BusCall& call) { inbox.askToOpen(call.arguments.value(0).toStringList()); }},
    Control{"Quit", [](InstanceInbox& inbox, const BusCall&) { inbox.askToQuit(); }},
};

QStringList carried(QStringList texts) {
  for (QString& text : texts)
    text = carriedText(text);
  return texts;
}

/// A reply's values, as the interface has them for an intent.
QVariantList valuesOf(Intent intent, const IntentReply& reply) {
  switch (intent) {
    case Intent::copyLatestClip:
      return {reply.message};
    case Intent::searchHistory:
      return {carried(reply.texts), reply.message};
    case Intent::toggleCapture:
      return {reply.paused, reply.message};
    case Intent::pasteFromCollection:
      return {};
    case Intent::listCollections:
      return {carried(reply.texts)};
  }
  return {};
}

QVariant metasOf(const QList<ClipSuggestion>& clips) {
  QDBusArgument metas;
  metas.beginArray(QMetaType::fromType<QVariantMap>());
  for (const ClipSuggestion& clip : clips) {
    metas << QVariantMap{{QStringLiteral("id"), clip.id},
                         {QStringLiteral("name"), carriedText(clip.text)},
                         {QStringLiteral("gicon"), QStringLiteral("app.nimbrel.Nimbrel")}};
  }
  metas.endArray();
  return QVariant::fromValue(metas);
}

}  // namespace

DBusInstanceHost::DBusInstanceHost() {
  object_ = std::make_unique<BusObject>(clock_, [this](const BusCall& call) {
    QMetaObject::invokeMethod(
        this, [this, call] { answer(call); }, Qt::QueuedConnection);
  });
  thread_.setObjectName(QStringLiteral("Nimbrel.bus"));
}

DBusInstanceHost::~DBusInstanceHost() {
  if (QDBusConnection bus = QDBusConnection::sessionBus(); bus.isConnected()) {
    unregisterObject();
    bus.unregisterService(QLatin1String(bus::kService));
  }
  thread_.quit();
  thread_.wait();
}

bool DBusInstanceHost::registerObject() {
  // Before it moves: the bus gives it a companion, which moves along.
  const bool registered = QDBusConnection::sessionBus().registerVirtualObject(
      QLatin1String(bus::kPath), object_.get(), QDBusConnection::SubPath);
  object_->moveToThread(&thread_);
  thread_.start();
  return registered;
}

void DBusInstanceHost::unregisterObject() {
  QDBusConnection::sessionBus().unregisterObject(QLatin1String(bus::kPath), QDBusConnection::UnregisterTree);
}

void DBusInstanceHost::reply(const BusCall& call, const QVariantList& values) {
  if (call.message.isReplyRequired()) object_->send(call.message.createReply(values));
}

void DBusInstanceHost::replyError(const BusCall& call, const QString& error, const QString& text) {
  if (call.message.isReplyRequired())
    object_->send(call.message.createErrorReply(bus::errorName(error), text));
}

InstanceHost::Claim DBusInstanceHost::claim(const QStringList& urls) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Claim::unavailable;
  // The object comes first: whoever finds the name taken must find somebody behind it.
  if (!registerObject()) return Claim::unavailable;
  if (bus.registerService(QLatin1String(bus::kService))) return Claim::first;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const QDBusMessage answer = handOver(urls);
    if (answer.type() == QDBusMessage::ReplyMessage) {
      unregisterObject();
      return Claim::handedOver;
    }
    // The other instance may be on its way out.
    if (bus.registerService(QLatin1String(bus::kService))) return Claim::first;
    // It may take up later what it has not answered yet; once is enough.
    if (answer.errorName() == QDBusError::errorString(QDBusError::NoReply)) return Claim::unanswered;
    QThread::msleep(kAttemptPause);
  }
  return Claim::unanswered;
}

QDBusMessage DBusInstanceHost::handOver(const QStringList& given) {
  // What is longer than any URL that is taken is not even sent.
  QStringList urls = given;
  urls.removeIf(
      [](const QString& url) { return url.size() + InstanceInbox::kCostOfUrl > BusObject::kMaxUrls; });
  if (urls.isEmpty() && !given.isEmpty()) urls.append(QString());
  const QString method = urls.isEmpty() ? QStringLiteral("Show") : QStringLiteral("OpenUrls");
  QDBusMessage call = QDBusMessage::createMethodCall(QLatin1String(bus::kService), QLatin1String(bus::kPath),
                                                     QLatin1String(bus::kInterface), method);
  if (!urls.isEmpty()) call << urls;
  return QDBusConnection::sessionBus().call(call, QDBus::Block, kCallTimeoutMilliseconds);
}

void DBusInstanceHost::setRequests(const InstanceRequests& requests) {
  inbox_.setRequests(requests);
}

void DBusInstanceHost::announceCapture(bool paused) {
  object_->setCapturePaused(paused);
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  auto switched = QDBusMessage::createSignal(QLatin1String(bus::kPath), QLatin1String(bus::kInterface),
                                             QLatin1String(bus::kCaptureSwitched));
  switched << paused;
  bus.send(switched);
  auto changed = QDBusMessage::createSignal(QLatin1String(bus::kPath), QLatin1String(bus::kProperties),
                                            QStringLiteral("PropertiesChanged"));
  changed << QLatin1String(bus::kInterface) << QVariantMap{{QLatin1String(bus::kCapturePaused), paused}}
          << QStringList();
  bus.send(changed);
}

void DBusInstanceHost::answer(const BusCall& call) {
  if (call.interface == QLatin1String(bus::kSearchInterface)) return answerSearch(call);
  if (answerAtOnce(call)) return;
  if (!answerIntent(call)) replyError(call, QStringLiteral("unavailable"), {});
}

bool DBusInstanceHost::answerAtOnce(const BusCall& call) {
  const auto* const method = std::find_if(kControls.begin(), kControls.end(), [&](const Control& one) {
    return call.member == QLatin1String(one.name);
  });
  if (method == kControls.end()) return false;
  // Answered before it is done: nobody need wait for that.
  reply(call);
  method->ask(inbox_, call);
  return true;
}

bool DBusInstanceHost::answerIntent(const BusCall& call) {
  const auto* const method =
      std::find_if(bus::kIntentMethods.begin(), bus::kIntentMethods.end(),
                   [&](const auto& one) { return call.member == QLatin1String(one.name); });
  if (method == bus::kIntentMethods.end() || !inbox_.requests().perform) return false;
  inbox_.requests().perform({method->intent, call.arguments.value(0).toString()},
                            [this, call, intent = method->intent](const IntentReply& outcome) {
                              if (outcome.error.isEmpty()) return reply(call, valuesOf(intent, outcome));
                              replyError(call, outcome.error, outcome.message);
                            });
  return true;
}

void DBusInstanceHost::answerSearch(const BusCall& call) {
  if (call.member == QLatin1String("GetInitialResultSet"))
    return suggest(call, call.arguments.value(0).toStringList());
  if (call.member == QLatin1String("GetSubsearchResultSet"))
    return suggest(call, call.arguments.value(1).toStringList());
  if (call.member == QLatin1String("GetResultMetas")) {
    const auto clips = inbox_.requests().describe
                           ? inbox_.requests().describe(call.arguments.value(0).toStringList())
                           : QList<ClipSuggestion>();
    return reply(call, {metasOf(clips)});
  }
  reply(call);
  if (call.member == QLatin1String("ActivateResult")) {
    if (inbox_.requests().choose) inbox_.requests().choose(call.arguments.value(0).toString());
    return;
  }
  inbox_.askToSearch(call.arguments.value(0).toStringList().join(u' ').left(kMaxSearch));
}

void DBusInstanceHost::suggest(const BusCall& call, const QStringList& terms) {
  if (!inbox_.requests().suggest) return reply(call, {QStringList()});
  inbox_.requests().suggest(terms, [this, call](const QStringList& ids) { reply(call, {ids}); });
}

}  // namespace nimbrel
