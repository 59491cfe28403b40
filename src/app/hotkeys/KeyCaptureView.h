#pragma once

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <functional>

#include "platform/KeyReader.h"

namespace nimbrel {

/// A field that takes the whole keyboard, also what the desktop or other programs have reserved for
/// themselves, and hands over each key that is pressed. Main thread.
class KeyCaptureView final : public QWidget {
  Q_OBJECT

 public:
  using OnKey = std::function<void(const PressedKey&)>;

  /// The reader must outlive this. Modifiers alone and the repetitions of a held key are not handed over.
  KeyCaptureView(const KeyReader& keys, OnKey onKey, QWidget* parent);
  ~KeyCaptureView() override;

  /// How long the keyboard is kept without a key: what locks the screen cannot have it meanwhile.
  static constexpr std::chrono::seconds kPatience{30};

  /// Takes the keyboard; the view must be visible.
  void startCapture();

  /// Another time without a key, `kPatience` by default.
  void setPatience(std::chrono::milliseconds patience) { patience_.setInterval(patience); }

  /// Gives it back.
  void stopCapture();

 Q_SIGNALS:
  /// The user has turned to something else while keys were captured, or presses none.
  void turnedAway();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const KeyReader& keys_;
  const OnKey onKey_;
  bool capturing_ = false;
  QTimer patience_;
};

}  // namespace nimbrel
