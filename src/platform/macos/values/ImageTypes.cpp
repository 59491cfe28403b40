#include "platform/macos/values/ImageTypes.h"

#include <QStringList>

namespace nimbrel::macos {
bool isDecodable(const QString& type) {
  static const QStringList kTypes{
      QStringLiteral("public.png"),         QStringLiteral("public.jpeg"),
      QStringLiteral("public.tiff"),        QStringLiteral("org.webmproject.webp"),
      QStringLiteral("com.compuserve.gif"), QStringLiteral("com.microsoft.bmp"),
      QStringLiteral("com.microsoft.ico"),  QStringLiteral("public.heic"),
      QStringLiteral("public.heif")};
  return kTypes.contains(type);
}

}  // namespace nimbrel::macos
