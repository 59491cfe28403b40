#include "platform/common/AnswerOnce.h"

#include <gmock/gmock.h>

#include <memory>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

class AnswerOnceTest : public ::testing::Test {
 protected:
  std::shared_ptr<AnswerOnce> make() {
    return std::make_shared<AnswerOnce>([this](const IntentReply& reply) { errors.append(reply.error); },
                                        IntentReply{.error = u"otherwise"_s});
  }

  QStringList errors;
};

TEST_F(AnswerOnceTest, GivesTheFirstReplyAndNoOther) {
  auto once = make();
  once->give({.error = u"first"_s});
  once->give({.error = u"second"_s});
  once.reset();
  EXPECT_THAT(errors, ElementsAre(u"first"));
}

TEST_F(AnswerOnceTest, GivesTheOtherReplyWhenTheLastHolderGoesWithoutOne) {
  auto once = make();
  auto also = once;
  once.reset();
  EXPECT_TRUE(errors.isEmpty());
  also.reset();
  EXPECT_THAT(errors, ElementsAre(u"otherwise"));
}

TEST_F(AnswerOnceTest, MayGoWhileItAnswers) {
  std::shared_ptr<AnswerOnce> once;
  int answers = 0;
  once = std::make_shared<AnswerOnce>(
      [&](const IntentReply&) {
        ++answers;
        once.reset();
      },
      IntentReply());
  once->give({});
  EXPECT_EQ(answers, 1);
}

}  // namespace
}  // namespace nimbrel
