#include "capture/model/ClipKind.h"

namespace nimbrel {

bool passesKind(const ClipItem& clip, ClipKind kind) {
  switch (kind) {
    case ClipKind::all:
      return true;
    case ClipKind::text:
      return clip.isText();
    case ClipKind::image:
      return clip.isImage();
    case ClipKind::files:
      return clip.isFile();
    case ClipKind::pinned:
      return clip.pinned;
  }
  return false;
}

}  // namespace nimbrel
