#include "capture/model/LinkText.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

bool isLink(const QString& text) {
  ClipItem clip;
  clip.text = text;
  return linkOf(clip).has_value();
}

TEST(LinkText, AcceptsWholeAddressesOfTheKnownSchemes) {
  for (const QString& text :
       {u"https://example.org"_s, u"  http://example.org/a?b=c#d \n"_s, u"HTTPS://EXAMPLE.ORG"_s,
        u"ftp://ftp.example.org/x"_s, u"mailto:ana@example.org"_s, u"https://ñandú.es/camión"_s})
    EXPECT_TRUE(isLink(text)) << text.toStdString();
}

TEST(LinkText, RefusesEverythingElse) {
  for (const QString& text : {QString(), u"example.org"_s, u"https://"_s, u"mailto:"_s, u"https://a b"_s,
                              u"mira https://example.org"_s, u"file:///etc/passwd"_s,
                              u"javascript:alert(1)"_s, u"https://a\nhttps://b"_s})
    EXPECT_FALSE(isLink(text)) << text.toStdString();
  EXPECT_FALSE(isLink(u"https://example.org/"_s + QString(9000, u'a')));
}

TEST(LinkText, BelongsToTextClipsOnly) {
  ClipItem file;
  file.text = u"https://example.org"_s;
  file.fileURLString = u"file:///a"_s;
  EXPECT_FALSE(linkOf(file));
}

}  // namespace
}  // namespace nimbrel
