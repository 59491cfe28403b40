#include "platform/common/IntentBridge.h"

#include <gmock/gmock.h>

#include "platform/InstanceClient.h"
#include "platform/common/NimbrelIntents.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

/// What the callers of C functions are given, in the order in which it comes.
class IntentBridgeTest : public ::testing::Test {
 public:
  void ask(NimbrelIntent intent, const char* argument = nullptr) {
    nimbrel_perform_intent(intent, argument, this, [](void* context, const NimbrelIntentReply* reply) {
      static_cast<IntentBridgeTest*>(context)->note(*reply);
    });
  }
  void note(const NimbrelIntentReply& reply) {
    IntentReply noted{.error = QString::fromUtf8(reply.error),
                      .message = QString::fromUtf8(reply.message),
                      .paused = reply.paused};
    ASSERT_NE(reply.texts, nullptr);
    for (std::size_t i = 0; i < reply.textCount; ++i)
      noted.texts.append(QString::fromUtf8(reply.texts[i]));
    replies.append(noted);
  }
  std::unique_ptr<IntentBridge> answeringBridge(const IntentReply& reply) {
    return std::make_unique<IntentBridge>([this, reply](const IntentCall& call, const IntentAnswer& answer) {
      calls.append(call);
      answer(reply);
    });
  }
  std::unique_ptr<IntentBridge> keepingBridge() {
    return std::make_unique<IntentBridge>(
        [this](const IntentCall&, const IntentAnswer& answer) { waiting.append(answer); });
  }

  QList<IntentReply> replies;
  QList<IntentCall> calls;
  QList<IntentAnswer> waiting;
  const QList<IntentReply> unavailable{{.error = InstanceClient::kUnavailable.toString()}};
};

TEST_F(IntentBridgeTest, CarriesIntentsAndTheirAnswers) {
  const IntentReply reply{.message = u"hecho"_s, .texts = {u"ñ"_s, QString(), u"b"_s}, .paused = true};
  const auto bridge = answeringBridge(reply);
  ask(NimbrelIntentCopyLatestClip);
  ask(NimbrelIntentSearchHistory, "x y");
  ask(NimbrelIntentToggleCapture);
  ask(NimbrelIntentPasteFromCollection, "ni\xc3\xb1o");
  ask(NimbrelIntentListCollections);
  EXPECT_EQ(calls, (QList<IntentCall>{{Intent::copyLatestClip, {}},
                                      {Intent::searchHistory, u"x y"_s},
                                      {Intent::toggleCapture, {}},
                                      {Intent::pasteFromCollection, u"niño"_s},
                                      {Intent::listCollections, {}}}));
  EXPECT_EQ(replies, QList<IntentReply>(5, reply));
}

TEST_F(IntentBridgeTest, NamesErrors) {
  const IntentReply reply{.error = u"emptyHistory"_s, .message = u"No hay."_s};
  const auto bridge = answeringBridge(reply);
  ask(NimbrelIntentCopyLatestClip);
  EXPECT_EQ(replies, QList<IntentReply>{reply});
}

TEST_F(IntentBridgeTest, AnswersLateAndInAnyOrder) {
  const auto bridge = keepingBridge();
  ask(NimbrelIntentCopyLatestClip);
  ask(NimbrelIntentCopyLatestClip);
  EXPECT_TRUE(replies.isEmpty());
  waiting.at(1)({.message = u"2"_s});
  waiting.at(0)({.message = u"1"_s});
  EXPECT_EQ(replies, (QList<IntentReply>{{.message = u"2"_s}, {.message = u"1"_s}}));
}

TEST_F(IntentBridgeTest, IsUnavailableWithoutABridgeAndAfterIt) {
  ask(NimbrelIntentListCollections);
  EXPECT_EQ(replies, unavailable);
  answeringBridge({}).reset();
  ask(NimbrelIntentListCollections);
  EXPECT_EQ(replies, unavailable + unavailable);
}

TEST_F(IntentBridgeTest, IsUnavailableForIntentsThatThereAreNot) {
  const auto bridge = answeringBridge({});
  ask(-1);
  ask(5);
  EXPECT_EQ(replies, unavailable + unavailable);
  EXPECT_TRUE(calls.isEmpty());
}

TEST_F(IntentBridgeTest, WhatWaitsWhenTheBridgeGoesIsAnsweredOnce) {
  auto bridge = keepingBridge();
  ask(NimbrelIntentCopyLatestClip);
  bridge.reset();
  EXPECT_EQ(replies, unavailable);
  waiting.first()({.message = u"too late"_s});
  EXPECT_EQ(replies, unavailable);
}

TEST_F(IntentBridgeTest, AnAnswerThatNobodyHoldsAnyMoreIsGiven) {
  const auto bridge = keepingBridge();
  ask(NimbrelIntentCopyLatestClip);
  waiting.clear();
  EXPECT_EQ(replies, unavailable);
}

TEST_F(IntentBridgeTest, ASecondAnswerIsDropped) {
  const auto bridge = keepingBridge();
  ask(NimbrelIntentCopyLatestClip);
  waiting.first()({.message = u"1"_s});
  waiting.first()({.message = u"2"_s});
  waiting.clear();
  EXPECT_EQ(replies, QList<IntentReply>{{.message = u"1"_s}});
}

TEST_F(IntentBridgeTest, WhoIsAnsweredMayAskAgain) {
  const auto bridge = answeringBridge({.message = u"hecho"_s});
  nimbrel_perform_intent(NimbrelIntentCopyLatestClip, nullptr, this,
                         [](void* context, const NimbrelIntentReply*) {
                           static_cast<IntentBridgeTest*>(context)->ask(NimbrelIntentToggleCapture);
                         });
  EXPECT_EQ(replies, QList<IntentReply>{{.message = u"hecho"_s}});
}

TEST_F(IntentBridgeTest, ArgumentsAreBounded) {
  const auto bridge = answeringBridge({});
  const QByteArray longest(IntentBridge::kMaxArgument, 'x');
  ask(NimbrelIntentSearchHistory, longest.constData());
  ask(NimbrelIntentSearchHistory, (longest + 'x').constData());
  EXPECT_EQ(replies, (QList<IntentReply>{{}, {.error = kArgumentTooLong.toString()}}));
  ASSERT_EQ(calls.size(), 1);
  EXPECT_EQ(calls.first().argument, QString::fromUtf8(longest));
}

TEST_F(IntentBridgeTest, BytesThatAreNoUtf8AreReplaced) {
  const auto bridge = answeringBridge({});
  ask(NimbrelIntentSearchHistory, "a\xff");
  ASSERT_EQ(calls.size(), 1);
  EXPECT_EQ(calls.first().argument, u"a\ufffd");
}

TEST_F(IntentBridgeTest, NullCharactersWithinTextsAreReplaced) {
  const auto bridge = answeringBridge({.message = u"a\0b"_s, .texts = {u"\0"_s, u"c\0d"_s}});
  ask(NimbrelIntentSearchHistory, "x");
  EXPECT_EQ(replies, (QList<IntentReply>{{.message = u"a\ufffdb"_s, .texts = {u"\ufffd"_s, u"c\ufffdd"_s}}}));
}

}  // namespace
}  // namespace nimbrel
