#pragma once

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace nimbrel {

/// Tells work on another thread that nobody wants its result any more: the standard library's `stop_token`,
/// which not every standard library has yet. Any thread.
class StopToken final {
 public:
  /// One that is never stopped.
  StopToken() = default;

  [[nodiscard]] bool stopRequested() const { return state_ && state_->requested; }

 private:
  friend class StopSource;
  friend class StopCallback;

  struct State {
    std::atomic<bool> requested = false;
    std::mutex mutex;
    std::vector<std::pair<const void*, std::function<void()>>> callbacks;
  };

  explicit StopToken(std::shared_ptr<State> state) : state_(std::move(state)) {}

  std::shared_ptr<State> state_;
};

/// Requests the stop, once and for good. Copies request the same.
class StopSource final {
 public:
  [[nodiscard]] StopToken token() const { return StopToken(state_); }

  [[nodiscard]] bool stopRequested() const { return state_->requested; }

  void requestStop() {
    const std::lock_guard lock(state_->mutex);
    if (state_->requested.exchange(true)) return;
    for (const auto& callback : std::exchange(state_->callbacks, {}))
      callback.second();
  }

 private:
  std::shared_ptr<StopToken::State> state_ = std::make_shared<StopToken::State>();
};

/// Has something done as soon as a stop is requested, on the thread that requests it, or at once where that
/// has been done; not any more once this has gone. What is done must be short and touch no token itself.
class StopCallback final {
 public:
  StopCallback(const StopToken& token, std::function<void()> callback) : state_(token.state_) {
    if (!state_) return;
    const std::lock_guard lock(state_->mutex);
    if (state_->requested)
      callback();
    else
      state_->callbacks.emplace_back(this, std::move(callback));
  }
  ~StopCallback() {
    if (!state_) return;
    const std::lock_guard lock(state_->mutex);
    auto& callbacks = state_->callbacks;
    callbacks.erase(std::remove_if(callbacks.begin(), callbacks.end(),
                                   [this](const auto& callback) { return callback.first == this; }),
                    callbacks.end());
  }
  StopCallback(const StopCallback&) = delete;
  StopCallback& operator=(const StopCallback&) = delete;

 private:
  std::shared_ptr<StopToken::State> state_;
};

}  // namespace nimbrel
