#pragma once

#include <QObject>
#include <functional>

#include "app/PreviewFiles.h"
#include "capture/Background.h"
#include "capture/model/IndexedClip.h"
#include "panel/SinglePreviewDataSource.h"
#include "platform/PreviewPanel.h"

namespace nimbrel {

/// Shows the selected clip in a preview beside the panel, and clears up after it. Main thread.
class QuickLook final : public QObject {
 public:
  /// Clears up first what an earlier run has left. `panelArea` tells where on the screen the panel is. All
  /// outlive this.
  QuickLook(PreviewPanel& preview, SideFiles& sideFiles, const QString& folder,
            std::function<QRect()> panelArea);
  ~QuickLook() override;

  [[nodiscard]] bool isVisible() const { return preview_.isVisible(); }

  /// Opens the preview of a clip; closes the preview when it is open.
  void toggle(const ClipRef& clip);

  /// Shows another clip where the preview is open; null, a clip that is not to be seen, shows nothing.
  void update(const ClipRef& clip);

  /// Closes the preview and deletes the files that were written for it.
  void close();

  /// A clip is gone: it is not shown any more, and its file is deleted where one was written.
  void forget(const QUuid& clip);

  /// *Waits* until no file is left, whatever the window still shows: the desktop may be gone already. For the
  /// end of the program.
  void finish();

  /// Called when the preview has closed.
  void setClosedHandler(std::function<void()> handler) { closedHandler_ = std::move(handler); }

 protected:
  /// The space bar closes the preview, whichever widget has the keyboard.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct TemporaryFile {
    QUrl url;
    QUuid clip;
  };

  void prepare(const ClipRef& clip, bool opens);
  void show(const QUuid& clip, const std::optional<PreviewFile>& file, bool opens);
  void closed();
  void showNothing();
  void removeFiles();

  PreviewPanel& preview_;
  PreviewFiles files_;
  std::function<QRect()> panelArea_;
  std::function<void()> closedHandler_;
  SinglePreviewDataSource dataSource_;
  /// The clip that is shown, or about to be.
  QUuid current_;
  QList<TemporaryFile> previewTempFiles_;
  /// Which request is the last one: what belongs to an earlier one is not shown any more.
  int request_ = 0;
  /// Whether the preview is to open once its file is there.
  bool opening_ = false;
  Background background_{QStringLiteral("Nimbrel.preview")};
};

}  // namespace nimbrel
