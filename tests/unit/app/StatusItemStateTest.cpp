#include "app/StatusItemState.h"

#include <gmock/gmock.h>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(StatusItemState, IsPlainByDefault) {
  EXPECT_EQ(statusItemState(false, 0), (StatusItemState{u"doc.on.clipboard"_s, u"Nimbrel"_s, {}}));
}

TEST(StatusItemState, ShowsTheQueue) {
  EXPECT_EQ(statusItemState(false, 3),
            (StatusItemState{u"doc.on.clipboard"_s, u"Nimbrel: 3 en cola"_s, u"3"_s}));
}

TEST(StatusItemState, ShowsThePauseAndKeepsTheNumber) {
  EXPECT_EQ(statusItemState(true, 3), (StatusItemState{u"pause.circle"_s, u"Nimbrel en pausa"_s, u"3"_s}));
  EXPECT_EQ(statusItemState(true, 0).title, QString());
}

}  // namespace
}  // namespace nimbrel
