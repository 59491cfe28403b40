#include "panel/PanelMenus.h"

#include <QActionGroup>

#include "capture/model/LinkText.h"
#include "look/PlainText.h"
#include "look/Symbols.h"
#include "panel/PanelTheme.h"

namespace nimbrel {
namespace {

/// A text, in UTF-16 units, on which every transform can be tried before anybody notices.
constexpr qsizetype kCheapText = 32 * 1024;
/// A menu's entry, in pixels; names may be as long as their owners like.
constexpr int kMostWidth = 260;

QIcon menuIcon(const QMenu& menu, const QString& symbol) {
  return symbols::icon(symbol, panelTheme(menu.palette()).secondaryText);
}

/// A foreign name as a menu's entry.
QString entryText(const QMenu& menu, const QString& name) {
  return plainButtonText(menu.fontMetrics().elidedText(name.simplified(), Qt::ElideRight, kMostWidth));
}

/// Long ones scroll instead of spreading over the screen.
QString menuStyle(const PanelTheme& theme) {
  return QStringLiteral(
             "QMenu { menu-scrollable: 1; background: %1; color: %2; border: 1px solid %3; padding: 5px; }"
             "QMenu::item { padding: 5px 24px 5px 10px; border-radius: 5px; }"
             "QMenu::item:selected { background: %4; }"
             "QMenu::item:disabled { color: %5; }"
             "QMenu::separator { height: 1px; background: %6; margin: 5px 8px; }"
             "QMenu::icon { padding-left: 8px; }"
             "QMenu::indicator { width: 14px; height: 14px; padding-left: 8px; }")
      .arg(theme.sheet.name(), theme.text.name(), theme.border.name(QColor::HexArgb),
           theme.chip.name(QColor::HexArgb), theme.placeholder.name(), theme.hairline.name(QColor::HexArgb));
}

QAction* addChoice(QMenu& menu, const QString& text, bool chosen) {
  QAction* const action = menu.addAction(text);
  action->setCheckable(true);
  action->setChecked(chosen);
  return action;
}

void disableAll(QMenu& menu) {
  const auto actions = menu.actions();
  for (QAction* const action : actions) {
    action->setEnabled(false);
    if (QMenu* const more = action->menu()) disableAll(*more);
  }
}

}  // namespace

PanelMenus::PanelMenus(ClipboardStore& store, ClipActions& actions, QWidget& panel)
    : QObject(&panel), store_(store), actions_(actions), panel_(panel) {}

QMenu* PanelMenus::makeMenu() {
  auto* const menu = new QMenu(&panel_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setStyleSheet(menuStyle(panelTheme(panel_.palette())));
  return menu;
}

QAction* PanelMenus::put(QMenu& menu, const QString& symbol, const QString& text, std::function<void()> act) {
  return menu.addAction(menuIcon(menu, symbol), text, this, std::move(act));
}

QMenu* PanelMenus::clipMenu(const ClipRef& clip, Secrecy secrecy) {
  QMenu* const menu = makeMenu();
  menu->setObjectName(QStringLiteral("clipMenu"));
  // A clip that goes, a secret whose time is over perhaps, takes what could be done with it along. The menu
  // stays: the key that was meant for it would act on another clip.
  connect(&store_, &ClipboardStore::clipsRemoved, menu, [this, menu, id = clip->clip.id] {
    if (!store_.items().rowOf(id)) disableAll(*menu);
  });
  addPasting(*menu, clip, secrecy);
  addOpening(*menu, clip);
  menu->addSeparator();
  addLooking(*menu, clip, secrecy);
  addOrganizing(*menu, clip);
  menu->addSeparator();
  put(*menu, QStringLiteral("trash"), tr("Borrar"), [this, clip] { actions_.remove(clip->clip); });
  return menu;
}

void PanelMenus::addPasting(QMenu& menu, const ClipRef& clip, Secrecy secrecy) {
  if (clip->clip.isText()) {
    menu.addAction(tr("Pegar sin formato"), this, [this, clip] { actions_.pastePlain(clip->clip); });
    addTransforms(menu, clip, secrecy);
  }
  if (clip->clip.isImage() && clip->clip.ocrText && !clip->clip.ocrText->isEmpty())
    put(menu, QStringLiteral("text.viewfinder"), tr("Pegar texto de la imagen"),
        [this, clip] { actions_.pasteRecognizedText(clip->clip); });
}

void PanelMenus::addTransforms(QMenu& menu, const ClipRef& clip, Secrecy secrecy) {
  QMenu* const transforms = menu.addMenu(tr("Pegar transformado"));
  transforms->setObjectName(QStringLiteral("transformsMenu"));
  for (const TextTransform transform : kTextTransforms) {
    QAction* const action = transforms->addAction(label(transform), this, [this, clip, transform] {
      actions_.pasteTransformed(clip->clip, transform);
    });
    action->setData(static_cast<int>(transform));
  }
  // What a secret can be transformed into says something about it.
  const bool cheap = clip->clip.text.size() <= kCheapText && secrecy != Secrecy::masked;
  if (!cheap) return;
  connect(transforms, &QMenu::aboutToShow, this, [this, clip, transforms] {
    const auto actions = transforms->actions();
    for (QAction* const action : actions) {
      const auto transform = static_cast<TextTransform>(action->data().toInt());
      action->setEnabled(store_.transformedText(clip->clip, transform).has_value());
    }
  });
}

void PanelMenus::addOpening(QMenu& menu, const ClipRef& clip) {
  if (linkOf(clip->clip))
    put(menu, QStringLiteral("link"), tr("Abrir enlace"), [this, clip] { actions_.openLink(clip->clip); });
  if (clip->clip.isFile())
    put(menu, QStringLiteral("folder"), tr("Mostrar en el Finder"),
        [this, clip] { actions_.reveal(clip->clip); });
}

void PanelMenus::addLooking(QMenu& menu, const ClipRef& clip, Secrecy secrecy) {
  if (secrecy == Secrecy::masked && actions_.canUnlock()) {
    const bool locked = actions_.isLocked();
    put(menu, locked ? QStringLiteral("touchid") : QStringLiteral("eye"),
        locked ? tr("Desbloquear con Touch ID") : tr("Mostrar el contenido"),
        [this, clip] { actions_.unlock(clip->clip); });
  }
  if (secrecy != Secrecy::masked)
    put(menu, QStringLiteral("eye"), tr("Vista rápida"), [this, clip] { Q_EMIT previewRequested(clip); });
}

void PanelMenus::addOrganizing(QMenu& menu, const ClipRef& clip) {
  const bool queued = store_.isQueued(clip->clip.id);
  put(menu, queued ? QStringLiteral("list.bullet.circle.fill") : QStringLiteral("list.bullet.circle"),
      queued ? tr("Quitar de la cola") : tr("Añadir a la cola"),
      [this, clip] { actions_.toggleQueue(clip->clip); });
  addCollections(menu, clip);
  menu.addAction(tr("Nueva colección…"), this, [this, clip] { Q_EMIT newCollectionRequested(clip); });
  put(menu, clip->clip.pinned ? QStringLiteral("pin.fill") : QStringLiteral("pin"),
      clip->clip.pinned ? tr("Desfijar") : tr("Fijar"), [this, clip] { actions_.togglePin(clip->clip); });
}

void PanelMenus::addCollections(QMenu& menu, const ClipRef& clip) {
  QMenu* const collections = menu.addMenu(menuIcon(menu, QStringLiteral("tray")), tr("Asignar a colección"));
  collections->setObjectName(QStringLiteral("collectionsMenu"));
  auto* const group = new QActionGroup(collections);
  QAction* const none =
      group->addAction(addChoice(*collections, tr("Sin colección"), !clip->clip.collection));
  connect(none, &QAction::triggered, this, [this, clip] { actions_.setCollection(clip->clip, {}); });
  const QStringList names = store_.collections();
  if (!names.isEmpty()) collections->addSeparator();
  for (const QString& name : names) {
    QAction* const action =
        group->addAction(addChoice(*collections, entryText(menu, name), clip->clip.collection == name));
    connect(action, &QAction::triggered, this,
            [this, clip, name] { actions_.setCollection(clip->clip, name); });
  }
}

QMenu* PanelMenus::filterMenu(const ClipFilter& filter) {
  QMenu* const menu = makeMenu();
  menu->setObjectName(QStringLiteral("filterMenu"));
  auto* group = new QActionGroup(menu);
  const auto add = [&](const QString& text, bool chosen, const ClipFilter& wanted) {
    QAction* const action = group->addAction(addChoice(*menu, text, chosen));
    connect(action, &QAction::triggered, this, [this, wanted] { Q_EMIT filterChosen(wanted); });
  };
  const auto withApp = [&](const std::optional<SourceApp>& app) {
    return ClipFilter{filter.kind, app, filter.collection};
  };
  const auto withCollection = [&](const std::optional<QString>& name) {
    return ClipFilter{filter.kind, filter.app, name};
  };
  add(tr("Todas las apps"), !filter.app, withApp({}));
  for (const SourceApp& app : store_.sourceApps())
    add(entryText(*menu, shownName(app)), filter.app == app, withApp(app));
  menu->addSeparator();
  group = new QActionGroup(menu);
  add(tr("Todas las colecciones"), !filter.collection, withCollection({}));
  for (const QString& name : store_.collections())
    add(entryText(*menu, name), filter.collection == name, withCollection(name));
  if (filter.app || filter.collection) {
    menu->addSeparator();
    put(*menu, QStringLiteral("arrow.counterclockwise"), tr("Restablecer filtros"),
        [this, kind = filter.kind] {
          Q_EMIT filterChosen({kind, {}, {}});
        });
  }
  return menu;
}

QMenu* PanelMenus::gearMenu() {
  QMenu* const menu = makeMenu();
  menu->setObjectName(QStringLiteral("gearMenu"));
  const bool paused = store_.isPaused();
  put(*menu, paused ? QStringLiteral("play.circle.fill") : QStringLiteral("pause.circle"),
      paused ? tr("Reanudar captura") : tr("Pausar captura"), [this, paused] { store_.setPaused(!paused); });
  QAction* const clear =
      put(*menu, QStringLiteral("trash"), tr("Borrar historial"), [this] { Q_EMIT clearRequested(); });
  clear->setEnabled(store_.items().unpinnedCount() > 0);
  menu->addSeparator();
  put(*menu, QStringLiteral("gearshape"), tr("Ajustes"), [this] { Q_EMIT settingsRequested(); });
  menu->addAction(tr("Salir"), this, &PanelMenus::quitRequested);
  return menu;
}

}  // namespace nimbrel
