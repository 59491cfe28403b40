#pragma once

#include <QWidget>
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

  /// Takes the keyboard; the view must be visible.
  void startCapture();

  /// Gives it back.
  void stopCapture();

 Q_SIGNALS:
  /// The user has turned to something else while keys were captured.
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
};

}  // namespace nimbrel
