#include "capture/model/ClipFilter.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

ClipItem clipFrom(const QString& identifier, const QString& name) {
  ClipItem clip;
  clip.sourceBundleID = identifier;
  clip.sourceName = name;
  return clip;
}

TEST(ClipFilter, LetsEverythingThroughAtFirst) {
  EXPECT_TRUE(passesFilter(ClipItem{}, ClipFilter{}));
}

TEST(ClipFilter, TellsApplicationsApartByIdentifierAndName) {
  const ClipFilter filter{.kind = ClipKind::all, .app = SourceApp{u"a"_s, u"A"_s}, .collection = {}};
  EXPECT_TRUE(passesFilter(clipFrom(u"a"_s, u"A"_s), filter));
  EXPECT_FALSE(passesFilter(clipFrom(u"a"_s, u"B"_s), filter));
  EXPECT_FALSE(passesFilter(clipFrom(u"b"_s, u"A"_s), filter));
  EXPECT_FALSE(passesFilter(ClipItem{}, filter));
}

TEST(ClipFilter, KnowsNoApplicationWithoutANameOrAnIdentifier) {
  EXPECT_FALSE(sourceAppOf(clipFrom(u"a"_s, QString())));
  ClipItem nameless;
  nameless.sourceName = u"A"_s;
  EXPECT_FALSE(sourceAppOf(nameless));
}

TEST(ClipFilter, AsksForAllOfItsParts) {
  ClipItem clip = clipFrom(u"a"_s, u"A"_s);
  clip.collection = u"Recetas"_s;
  clip.pinned = true;
  ClipFilter filter{.kind = ClipKind::pinned, .app = SourceApp{u"a"_s, u"A"_s}, .collection = u"Recetas"_s};
  EXPECT_TRUE(passesFilter(clip, filter));
  filter.collection = u"recetas"_s;
  EXPECT_FALSE(passesFilter(clip, filter));
  filter.collection = {};
  filter.kind = ClipKind::image;
  EXPECT_FALSE(passesFilter(clip, filter));
}

}  // namespace
}  // namespace nimbrel
