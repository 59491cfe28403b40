#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QWidget>
#include <functional>

#include "app/hotkeys/HotKeyCombo.h"
#include "app/hotkeys/HotKeyDispatcher.h"
#include "app/hotkeys/KeyCaptureView.h"

namespace nimbrel {

/// Shows a key combination and records another one in its place. Main thread.
class HotKeyRecorder final : public QWidget {
  Q_OBJECT

 public:
  /// Registers a recorded combination; false when it is refused.
  using Apply = std::function<bool(const HotKeyCombo&)>;

  /// While something is recorded, the dispatcher's hot keys rest. Both references must outlive this. `title`
  /// says what the combination is for.
  HotKeyRecorder(const KeyReader& keys, HotKeyDispatcher& dispatcher, const QString& title, Apply apply,
                 QWidget* parent = nullptr);
  ~HotKeyRecorder() override;

  /// What is shown while nothing is recorded.
  void setCombo(const HotKeyCombo& combo);

  [[nodiscard]] bool isRecording() const { return recording_; }
  /// What is wrong with what was pressed last, empty when nothing is.
  [[nodiscard]] QString message() const { return message_->text(); }

 protected:
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void startRecording();
  void stopRecording();
  void take(const PressedKey& key);
  void showWarningColor();
  void setMessage(const QString& message);

  HotKeyDispatcher& dispatcher_;
  const QString title_;
  const Apply apply_;
  QLabel* message_;
  QStackedWidget* field_;
  QPushButton* button_;
  KeyCaptureView* capture_;
  bool recording_ = false;
};

}  // namespace nimbrel
