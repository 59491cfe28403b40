#include "panel/ClipActions.h"

#include <QPointer>

#include "capture/model/LinkText.h"

namespace nimbrel {

ClipActions::ClipActions(const ClipActionParts& parts) : parts_(parts) {}

bool ClipActions::isThere(const ClipItem& clip) {
  if (parts_.store.items().rowOf(clip.id)) return true;
  Q_EMIT failed(tr("Este elemento ya no está en el historial."));
  return false;
}

void ClipActions::paste(const ClipItem& clip) {
  if (!isThere(clip)) return;
  parts_.store.copyToPasteboard(clip, false);
  Q_EMIT pasteRequested();
}

void ClipActions::pastePlain(const ClipItem& clip) {
  if (!isThere(clip)) return;
  parts_.store.copyToPasteboard(clip, true);
  Q_EMIT pasteRequested();
}

void ClipActions::pasteRecognizedText(const ClipItem& clip) {
  if (isThere(clip) && parts_.store.copyRecognizedText(clip)) Q_EMIT pasteRequested();
}

void ClipActions::pasteTransformed(const ClipItem& clip, TextTransform transform) {
  if (!isThere(clip)) return;
  const auto text = parts_.store.transformedText(clip, transform);
  if (!text) {
    Q_EMIT failed(tr("«%1» no se puede aplicar a este texto.").arg(label(transform)));
    return;
  }
  parts_.store.copyTextMadeOf(clip, *text);
  Q_EMIT pasteRequested();
}

void ClipActions::openLink(const ClipItem& clip) {
  const auto link = linkOf(clip);
  if (!link || !isThere(clip)) return;
  if (parts_.opener.openUrl(*link))
    Q_EMIT leaveRequested();
  else
    Q_EMIT failed(tr("No hay ningún programa con que abrirlo."));
}

void ClipActions::reveal(const ClipItem& clip) {
  if (!clip.isFile() || !isThere(clip)) return;
  const QList<QUrl> files = parts_.store.contentOf(clip).fileUrls;
  if (!files.isEmpty() && parts_.opener.reveal(files))
    Q_EMIT leaveRequested();
  else
    Q_EMIT failed(tr("No se puede mostrar este archivo."));
}

void ClipActions::remove(const ClipItem& clip) {
  if (isThere(clip)) Q_EMIT removed(parts_.store.removeClipForNow(clip.id));
}

void ClipActions::undoRemoval() {
  if (const auto id = parts_.store.undoRemoval()) Q_EMIT restored(*id);
}

void ClipActions::togglePin(const ClipItem& clip) {
  if (isThere(clip)) parts_.store.togglePin(clip.id);
}

void ClipActions::toggleQueue(const ClipItem& clip) {
  if (!isThere(clip)) return;
  if (parts_.store.isQueued(clip.id))
    parts_.store.removeFromQueue(clip.id);
  else
    parts_.store.addToQueue(clip.id);
}

void ClipActions::setCollection(const ClipItem& clip, const QString& name) {
  if (isThere(clip)) parts_.store.setCollection(clip.id, name);
}

bool ClipActions::canUnlock() const {
  return !isLocked() || parts_.authenticate;
}

void ClipActions::unlock(const ClipItem& clip) {
  if (!clip.isSensitive() || !canUnlock() || !isThere(clip)) return;
  if (!isLocked()) {
    Q_EMIT unlocked(clip.id);
    return;
  }
  parts_.authenticate([actions = QPointer(this), id = clip.id, use = use_](bool proven) {
    if (actions && proven && use == actions->use_) Q_EMIT actions->unlocked(id);
  });
}

}  // namespace nimbrel
