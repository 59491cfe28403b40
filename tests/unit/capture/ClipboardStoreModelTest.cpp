#include <gmock/gmock.h>

#include <QRandomGenerator>
#include <algorithm>

#include "support/StoreFixture.h"

/// Random sequences of operations, checked step by step against a model that is too simple to be wrong.
namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

struct ModelClip {
  QString text;
  bool pinned = false;
  QString collection;
  bool secret = false;
  /// In steps of the clock; negative means never.
  qint64 expiresAt = -1;
  bool operator==(const ModelClip&) const = default;
};

/// The history as a plain list, newest first.
class Model {
 public:
  QList<ModelClip> clips;
  QStringList queue;
  qsizetype capacity = 0;
  qint64 now = 0;

  [[nodiscard]] qsizetype find(const QString& text) const {
    for (qsizetype i = 0; i < clips.size(); ++i) {
      if (clips.at(i).text == text) return i;
    }
    return -1;
  }

  void copy(const QString& text, bool secret, qint64 life) {
    const qsizetype known = find(text);
    ModelClip clip = known >= 0 ? clips.takeAt(known) : ModelClip{.text = text};
    if (secret && (known < 0 || !clip.pinned)) {
      clip.secret = true;
      clip.expiresAt = now + life;
    }
    clips.prepend(clip);
    if (known < 0) trim(capacity);
  }

  void trim(qsizetype limit) {
    qsizetype unpinned = std::count_if(clips.begin(), clips.end(), [](const auto& c) { return !c.pinned; });
    for (qsizetype i = clips.size() - 1; i >= 0 && unpinned > limit; --i) {
      if (clips.at(i).pinned) continue;
      clips.removeAt(i);
      --unpinned;
    }
    dropFromQueue();
  }

  void expire() {
    clips.removeIf([&](const ModelClip& c) { return !c.pinned && c.expiresAt >= 0 && c.expiresAt <= now; });
    dropFromQueue();
  }

  void dropFromQueue() {
    queue.removeIf([&](const QString& text) { return find(text) < 0; });
  }
};

class RandomOperations : public testing::StoreFixture, public ::testing::WithParamInterface<quint32> {
 protected:
  void SetUp() override {
    settings.maxUnpinned = 12;
    settings.sensitiveExpiry = 7;
    model.capacity = 12;
    for (int i = 0; i < 5; ++i)
      grader.grades.insert(u"secreto %1"_s.arg(i), SensitivityLevel::hard);
    launch();
  }

  int below(int limit) { return static_cast<int>(random_.bounded(limit)); }

  /// One second goes by with every step, as the fixture's copies do.
  void pass() {
    ++model.now;
    model.expire();
  }

  void copySomething() {
    const bool secret = below(5) == 0;
    const QString text = secret ? u"secreto %1"_s.arg(below(5)) : u"texto %1"_s.arg(below(30));
    pass();
    model.copy(text, secret, settings.sensitiveExpiry);
    copyText(text);
  }

  void wait() {
    pass();
    clock.advance(1s);
    store().tick();
  }

  void changeSomething() {
    if (model.clips.isEmpty()) return;
    const auto row = static_cast<qsizetype>(below(static_cast<int>(model.clips.size())));
    ModelClip& clip = model.clips[row];
    const QUuid id = store().items().at(row)->clip.id;
    switch (below(5)) {
      case 0:
        clip.pinned = !clip.pinned;
        if (clip.pinned) clip.expiresAt = -1;
        return store().togglePin(id);
      case 1: {
        const QString name = below(3) == 0 ? u"  "_s : u"colección %1"_s.arg(below(3));
        clip.collection = name.trimmed();
        if (!clip.collection.isEmpty()) {
          clip.pinned = true;
          clip.expiresAt = -1;
        }
        return store().setCollection(id, name);
      }
      case 2:
        if (!model.queue.contains(clip.text)) model.queue.append(clip.text);
        return store().addToQueue(id);
      case 3:
        model.queue.removeOne(clip.text);
        return store().removeFromQueue(id);
      default:
        model.clips.removeAt(row);
        model.dropFromQueue();
        return store().removeClip(id);
    }
  }

  void step() {
    const int dice = below(100);
    if (dice < 50) return copySomething();
    if (dice < 88) return changeSomething();
    if (dice < 96) return wait();
    if (dice < 98) {
      model.trim(0);
      return store().clearHistory();
    }
    restart();
  }

  void restart() {
    quit();
    model.queue.clear();
    launch();
  }

  [[nodiscard]] QList<ModelClip> actual() const {
    QList<ModelClip> clips;
    for (qsizetype row = 0; row < texts().size(); ++row) {
      const ClipItem& item = clip(row);
      const auto left =
          item.expiresAt
              ? std::chrono::duration_cast<std::chrono::seconds>(*item.expiresAt - Timestamp(clock.wall))
              : 0s;
      clips.append({.text = item.text,
                    .pinned = item.pinned,
                    .collection = item.collection.value_or(QString()),
                    .secret = item.isSensitive(),
                    .expiresAt = item.expiresAt ? model.now + left.count() : -1});
    }
    return clips;
  }

  [[nodiscard]] QStringList actualQueue() {
    QStringList queued;
    for (const QUuid& id : store().queuedIDs()) {
      const auto row = store().items().rowOf(id);
      queued.append(row ? store().items().at(*row)->clip.text : u"gone"_s);
    }
    return queued;
  }

  void check() {
    ASSERT_EQ(actual(), model.clips);
    ASSERT_EQ(actualQueue(), model.queue);
    QSet<QUuid> ids;
    for (qsizetype row = 0; row < store().items().size(); ++row) {
      ids.insert(clip(row).id);
      ASSERT_GE(clip(std::max<qsizetype>(row - 1, 0)).date, clip(row).date);
    }
    ASSERT_EQ(ids.size(), store().items().size());
  }

  /// The rows of the database are the history.
  void checkDatabase() {
    const auto loaded = database().loadAll();
    ASSERT_EQ(loaded.clips.size(), store().items().size());
    for (const ClipRef& stored : loaded.clips) {
      const auto row = store().items().rowOf(stored->clip.id);
      ASSERT_TRUE(row);
      ASSERT_EQ(stored->clip, clip(*row)) << stored->clip.text.toStdString();
    }
  }

  Model model;

 private:
  QRandomGenerator random_{GetParam()};
};

TEST_P(RandomOperations, LeaveTheHistoryAsASimpleModelHasIt) {
  for (int i = 0; i < 400; ++i) {
    step();
    ASSERT_NO_FATAL_FAILURE(check()) << "after step " << i;
    if (i % 40 != 0) continue;
    ASSERT_NO_FATAL_FAILURE(checkDatabase()) << "after step " << i;
  }
  ASSERT_NO_FATAL_FAILURE(checkDatabase());
  restart();
  ASSERT_NO_FATAL_FAILURE(check());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperations, ::testing::Range(1U, 13U));

}  // namespace
}  // namespace nimbrel
