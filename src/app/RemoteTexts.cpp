#include "app/RemoteTexts.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>

#include "capture/CaptureDecision.h"
#include "capture/model/Log.h"
#include "capture/model/TextRules.h"

namespace nimbrel {
namespace {

/// A byte takes three characters at most, and the rest of a URL is short.
constexpr qsizetype kMaxUrlCharacters = 3 * kMaxTextBytes + 4096;

/// What looking at an empty one costs.
constexpr qsizetype kCostOfUrl = 1000;

using Items = QList<std::pair<QString, QString>>;

std::optional<QString> firstNamed(const Items& items, QStringView name) {
  const auto item =
      std::find_if(items.begin(), items.end(), [&](const auto& one) { return one.first == name; });
  if (item == items.end()) return std::nullopt;
  return item->second;
}

RemoteDeviceType deviceNamed(const QString& name) {
  const QString lower = name.toLower();
  if (lower == u"iphone") return RemoteDeviceType::iPhone;
  if (lower == u"ipad") return RemoteDeviceType::iPad;
  if (lower == u"mac") return RemoteDeviceType::mac;
  return RemoteDeviceType::universal;
}

}  // namespace

std::optional<RemoteText> remoteTextOf(const QString& url) {
  if (url.size() > kMaxUrlCharacters) return std::nullopt;
  const QUrl parsed(url, QUrl::TolerantMode);
  if (parsed.scheme() != u"nimbrel" || parsed.host() != u"add") return std::nullopt;
  const Items items = QUrlQuery(parsed).queryItems(QUrl::FullyDecoded);
  const QString text = trimmedWhitespace(firstNamed(items, u"text").value_or(QString())).toString();
  if (text.isEmpty()) return std::nullopt;
  return RemoteText{text, deviceNamed(firstNamed(items, u"source").value_or(QString()))};
}

void RemoteTexts::openUrls(const QStringList& urls) {
  for (const QString& url : urls) {
    // Before the URL is looked at: a flood costs no more than that.
    if (!mayLookAt(url)) return refuse();
    const auto remote = remoteTextOf(url);
    if (!remote || remote->text.toUtf8().size() > kMaxTextBytes) continue;
    refusing_ = false;
    additions_.push_back(clock_.steadyNow());
    store_.addRemoteText(remote->text, remote->device);
  }
}

bool RemoteTexts::mayLookAt(const QString& url) {
  const auto now = clock_.steadyNow();
  while (!additions_.empty() && now - additions_.front() >= kWindow)
    additions_.pop_front();
  while (!looks_.empty() && now - looks_.front().moment >= kWindow) {
    lookedAt_ -= looks_.front().characters;
    looks_.pop_front();
  }
  const qsizetype cost = std::min(url.size(), kMaxUrlCharacters) + kCostOfUrl;
  if (additions_.size() >= kMaxAdditions || lookedAt_ + cost > kMaxCharacters) return false;
  looks_.push_back({now, cost});
  lookedAt_ += cost;
  return true;
}

void RemoteTexts::refuse() {
  if (std::exchange(refusing_, true)) return;
  qCWarning(clipboardLog, "No se añadió lo recibido por URL: más de %d textos, o demasiado, en %d segundos",
            static_cast<int>(kMaxAdditions), static_cast<int>(kWindow.count()));
}

}  // namespace nimbrel
