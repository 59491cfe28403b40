#include "platform/linux/DesktopFile.h"

#include <QFile>
#include <QFileInfo>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMaxBytes = 256 * 1024;

QString unescaped(QStringView value) {
  QString text;
  text.reserve(value.size());
  for (qsizetype i = 0; i < value.size(); ++i) {
    const bool escape = value[i] == u'\\' && i + 1 < value.size();
    if (!escape) {
      text += value[i];
      continue;
    }
    switch (value[++i].unicode()) {
      case u's':
        text += u' ';
        break;
      case u'n':
        text += u'\n';
        break;
      case u't':
        text += u'\t';
        break;
      case u'r':
        text += u'\r';
        break;
      default:
        text += value[i];
    }
  }
  return text;
}

}  // namespace

std::optional<DesktopFile> DesktopFile::read(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
  return parse(file.read(kMaxBytes));
}

std::optional<DesktopFile> DesktopFile::parse(const QByteArray& bytes) {
  DesktopFile parsed;
  bool inMainGroup = false;
  for (const QByteArray& raw : bytes.split('\n')) {
    const QString line = QString::fromUtf8(raw).trimmed();
    if (line.startsWith(u'[')) {
      if (inMainGroup) break;
      inMainGroup = line == u"[Desktop Entry]";
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (!inMainGroup || equals < 1 || line.startsWith(u'#')) continue;
    const QString key = line.left(equals).trimmed();
    if (!parsed.values_.contains(key)) parsed.values_.insert(key, line.mid(equals + 1).trimmed());
  }
  return inMainGroup ? std::optional(std::move(parsed)) : std::nullopt;
}

QString DesktopFile::value(const QString& key) const {
  return unescaped(values_.value(key));
}

QString DesktopFile::localValue(const QString& key, const QString& language) const {
  for (const QString& locale : {language, language.section(u'_', 0, 0)}) {
    const auto found = values_.constFind(u"%1[%2]"_s.arg(key, locale));
    if (found != values_.constEnd()) return unescaped(*found);
  }
  return value(key);
}

QString execValue(const QString& program) {
  QString quoted;
  for (const QChar c : program) {
    // Four have a meaning inside quotes. Their backslash, and one that is meant, is escaped once more as any
    // backslash in a value is.
    if (c == u'"' || c == u'`' || c == u'$')
      quoted += u"\\\\"_s + c;
    else if (c == u'\\')
      quoted += u"\\\\\\\\"_s;
    else if (c == u'%')
      quoted += u"%%"_s;
    else
      quoted += c;
  }
  return u'"' + quoted + u'"';
}

QString programOf(const QString& exec) {
  const QString line = exec.trimmed();
  const QString program = line.startsWith(u'"') ? line.section(u'"', 1, 1) : line.section(u' ', 0, 0);
  return program.section(u'/', -1);
}

}  // namespace nimbrel
