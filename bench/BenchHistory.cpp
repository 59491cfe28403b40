#include "bench/BenchHistory.h"

#include <array>
#include <random>

#include "storage/ContentHash.h"

namespace nimbrel::bench {
namespace {

constexpr std::array kWords{
    u"canción",     u"factura", u"reunión",    u"jueves",
    u"presupuesto", u"informe", u"trimestral", u"https://example.org/",
    u"the",         u"request", u"response",   u"database",
    u"niño",        u"mañana",  u"camión",     u"return",
    u"función",     u"código",  u"árbol",      u"ventana",
    u"lista",       u"panel",   u"cliente",    u"servidor",
};

}  // namespace

QList<ClipItem> makeClips(int count) {
  std::mt19937 random(20260314);
  std::uniform_int_distribution<std::size_t> word(0, kWords.size() - 1);
  QList<ClipItem> clips;
  clips.reserve(count);
  for (int number = 0; number < count; ++number) {
    ClipItem clip;
    clip.text = QStringLiteral("%1:").arg(number);
    while (clip.text.size() < 190)
      clip.text += u' ' + QString::fromUtf16(kWords.at(word(random)));
    std::array<quint32, 4> bits{};
    for (quint32& part : bits)
      part = static_cast<quint32>(random());
    clip.id = QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char*>(bits.data()), sizeof bits));
    clip.date = timestampFromUnixSeconds(1773500000.0 - number);
    clip.pinned = true;
    clip.textHash = sha256Hex(clip.text.toUtf8());
    clip.sourceBundleID = QStringLiteral("org.kde.kate");
    clip.sourceName = QStringLiteral("Kate");
    clips.append(clip);
  }
  return clips;
}

}  // namespace nimbrel::bench
