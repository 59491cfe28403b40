#include "platform/common/InstanceInbox.h"

#include <utility>

namespace nimbrel {

void InstanceInbox::setRequests(const InstanceRequests& requests) {
  requests_ = requests;
  deliver();
}

void InstanceInbox::askToShow() {
  showRequested_ = true;
  deliver();
}

void InstanceInbox::askToSearch(const QString& text) {
  search_ = text;
  askToShow();
}

void InstanceInbox::askForCollections() {
  collectionsRequested_ = true;
  deliver();
}

void InstanceInbox::askToOpen(const QStringList& urls) {
  keep(urls);
  deliver();
}

void InstanceInbox::askToQuit() {
  quitRequested_ = true;
  deliver();
}

void InstanceInbox::keep(const QStringList& urls) {
  for (const QString& url : urls) {
    const qsizetype cost = url.size() + kCostOfUrl;
    if (urlCharacters_ + cost > kMaxUrls) break;
    urlCharacters_ += cost;
    urls_.append(url);
  }
}

void InstanceInbox::deliver() {
  if (requests_.openUrls && !urls_.isEmpty()) {
    urlCharacters_ = 0;
    requests_.openUrls(std::exchange(urls_, {}));
  }
  if (requests_.show && std::exchange(showRequested_, false)) {
    requests_.show();
    if (const QString text = std::exchange(search_, {}); !text.isEmpty() && requests_.showSearch)
      requests_.showSearch(text);
  }
  if (requests_.showCollections && std::exchange(collectionsRequested_, false)) requests_.showCollections();
  if (requests_.quit && std::exchange(quitRequested_, false)) requests_.quit();
}

}  // namespace nimbrel
