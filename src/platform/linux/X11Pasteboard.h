#pragma once

#include <QObject>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/ImageCodec.h"
#include "platform/Pasteboard.h"
#include "platform/linux/DesktopEntries.h"

namespace nimbrel {

/// The CLIPBOARD selection (ICCCM 2.6.1.3), read and served on a thread and X connection of its own, so that
/// no other program can hold anybody up. Each change becomes a snapshot as soon as its owner has answered;
/// the main thread only ever looks at finished ones.
class X11Pasteboard final : public Pasteboard {
 public:
  /// `display` as in the DISPLAY variable, or empty for that variable's own value. The entries must outlive
  /// this, and so must the codec, with which images are offered in more formats than their own.
  explicit X11Pasteboard(DesktopEntries& entries, ImageCodec* codec = nullptr,
                         const QByteArray& display = {});
  ~X11Pasteboard() override;

  /// X11 asks nobody.
  [[nodiscard]] Access access() const override { return Access::alwaysAllow; }
  void setReadPolicy(const PasteboardReadPolicy& policy) override;
  [[nodiscard]] qint64 changeCount() const override;
  [[nodiscard]] QList<PasteboardSnapshot> changesAfter(qint64 count) override;
  [[nodiscard]] std::optional<QString> currentText() const override;
  std::optional<qint64> write(const PasteboardContent& content) override;
  std::optional<qint64> clearIfUnchanged(qint64 count) override;
  void setChangeHandler(std::function<void()> handler) override;

  /// Offers the program's own content as the PRIMARY selection too, for terminals that paste from there.
  /// False when it could not be had: the content on the pasteboard is somebody else's, or the server does not
  /// answer. Main thread.
  [[nodiscard]] bool offerAsPrimary();

 private:
  class Worker;

  /// What the two threads share, all under one lock that nobody holds while waiting for anything else.
  struct Shared {
    mutable std::mutex mutex;
    std::condition_variable written;
    PasteboardReadPolicy policy;
    qint64 changeCount = 0;
    std::optional<QString> text;
    std::deque<PasteboardSnapshot> ready;
    qint64 readyBytes = 0;
    /// Asked for by the main thread and not done yet.
    std::optional<PasteboardContent> pendingWrite;
    bool pendingClear = false;
    bool pendingPrimary = false;
    /// Wishes are numbered; those up to `doneTicket` have been carried out.
    quint64 askedTicket = 0;
    quint64 doneTicket = 0;
    bool primaryIsOurs = false;
    bool stopping = false;
    bool connected = true;
  };

  /// Wakes the worker and waits a little until it has carried out what was asked; whether it has.
  bool awaitWorker(std::unique_lock<std::mutex>& lock);
  void wakeWorker();
  void announce();

  DesktopEntries& entries_;
  ImageCodec* const codec_;
  Shared shared_;
  std::function<void()> handler_;
  QObject context_;
  int wakeDescriptor_ = -1;
  std::unique_ptr<Worker> worker_;
  std::thread thread_;
};

}  // namespace nimbrel
