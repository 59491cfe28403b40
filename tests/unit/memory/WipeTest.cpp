#include "memory/Wipe.h"

#include <gmock/gmock.h>

#include <array>

namespace nimbrel {
namespace {

TEST(Wipe, OverwritesMemory) {
  std::array<char, 6> memory{'s', 'e', 'c', 'r', 'e', 't'};
  wipe(memory.data(), memory.size());
  EXPECT_EQ(memory, (std::array<char, 6>{}));
}

TEST(Wipe, LeavesWhatOthersHold) {
  QByteArray bytes("secret, and long enough to be shared");
  const QByteArray other = bytes;
  wipe(bytes);
  EXPECT_TRUE(bytes.isEmpty());
  EXPECT_EQ(other, "secret, and long enough to be shared");
  QString text = QString::fromLatin1(other);
  const QString otherText = text;
  wipe(text);
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(otherText, QString::fromLatin1(other));
}

TEST(Wipe, WhatHasBeenMovedBelongsToItsNewHolderAlone) {
  WipedBytes secret(QByteArray(64, 'x'));
  const char* const memory = secret.bytes().constData();
  const WipedBytes moved(std::move(secret));
  EXPECT_EQ(moved.bytes().constData(), memory);
  EXPECT_EQ(moved.bytes(), QByteArray(64, 'x'));
}

TEST(Wipe, EmptyValuesAreNothingToBeWiped) {
  QByteArray nothing;
  wipe(nothing);
  QString none;
  wipe(none);
  const WipedBytes empty{QByteArray()};
  EXPECT_TRUE(empty.bytes().isEmpty());
}

}  // namespace
}  // namespace nimbrel
