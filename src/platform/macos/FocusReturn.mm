#include "platform/macos/FocusReturn.h"

#import <AppKit/AppKit.h>

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/macos/NotificationObserver.h"

namespace nimbrel::macos {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 300ms;

/// Whether keys go to another application.
bool othersHaveKeyboard() {
  return !NSApp.active && !NSApp.keyWindow;
}

}  // namespace

FocusReturn::FocusReturn() {
  limit_.setSingleShot(true);
  limit_.setInterval(kPatience);
  QObject::connect(&limit_, &QTimer::timeout, [this] { finish(); });
}

FocusReturn::~FocusReturn() = default;

void FocusReturn::await(std::function<void(bool)> done) {
  forget();
  if (othersHaveKeyboard()) return done(true);
  done_ = std::move(done);
  resigned_ = std::make_unique<NotificationObserver>(
      NSNotificationCenter.defaultCenter, NSApplicationDidResignActiveNotification, nil, ^(NSNotification*) {
        // Not from within: this ends the observer.
        limit_.start(0);
      });
  limit_.start(kPatience);
}

void FocusReturn::forget() {
  limit_.stop();
  resigned_.reset();
  done_ = {};
}

void FocusReturn::finish() {
  const auto done = std::exchange(done_, {});
  forget();
  if (done) done(othersHaveKeyboard());
}

void yieldUnlessSeen() {
  const auto windows = QGuiApplication::topLevelWindows();
  const bool seen =
      std::any_of(windows.begin(), windows.end(), [](const QWindow* window) { return window->isVisible(); });
  if (NSApp.active && !seen) [NSApp hide:nil];
}

}  // namespace nimbrel::macos
