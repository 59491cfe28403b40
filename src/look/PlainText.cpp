#include "look/PlainText.h"

namespace nimbrel {

QString plainButtonText(QString text) {
  return text.replace(u'&', QStringLiteral("&&"));
}

QString plainToolTip(const QString& text) {
  return QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

}  // namespace nimbrel
