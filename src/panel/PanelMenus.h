#pragma once

#include <QMenu>
#include <QObject>
#include <functional>

#include "panel/ClipActions.h"
#include "panel/ClipRowText.h"

namespace nimbrel {

/// The menus of the panel: of a clip, of the filters, of the gear. Each is made when it is opened and gone
/// when it closes. Main thread.
class PanelMenus final : public QObject {
  Q_OBJECT

 public:
  /// Store and actions must outlive this; `panel` is what the menus belong to.
  PanelMenus(ClipboardStore& store, ClipActions& actions, QWidget& panel);

  /// What can be done with a clip; only what applies to it.
  [[nodiscard]] QMenu* clipMenu(const ClipRef& clip, Secrecy secrecy);

  /// The applications and collections that the history has, and the way back to all of it.
  [[nodiscard]] QMenu* filterMenu(const ClipFilter& filter);

  /// Pausing, clearing, the settings, quitting.
  [[nodiscard]] QMenu* gearMenu();

 Q_SIGNALS:
  void filterChosen(const nimbrel::ClipFilter& filter);
  void newCollectionRequested(const nimbrel::ClipRef& clip);
  void previewRequested(const nimbrel::ClipRef& clip);
  void clearRequested();
  void settingsRequested();
  void quitRequested();

 private:
  QMenu* makeMenu();
  /// Adds an entry with a symbol, and what it does.
  QAction* put(QMenu& menu, const QString& symbol, const QString& text, std::function<void()> act);
  void addPasting(QMenu& menu, const ClipRef& clip, Secrecy secrecy);
  void addTransforms(QMenu& menu, const ClipRef& clip, Secrecy secrecy);
  void addOpening(QMenu& menu, const ClipRef& clip);
  void addLooking(QMenu& menu, const ClipRef& clip, Secrecy secrecy);
  void addOrganizing(QMenu& menu, const ClipRef& clip);
  void addCollections(QMenu& menu, const ClipRef& clip);

  ClipboardStore& store_;
  ClipActions& actions_;
  QWidget& panel_;
};

}  // namespace nimbrel
