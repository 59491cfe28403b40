#include "storage/HistoryCipher.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

#include "support/Fakes.h"
#include "support/LogRecorder.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

const QString kItem = u"Nimbrel.history-key/history"_s;

class HistoryCipherTest : public ::testing::Test {
 protected:
  void useKey(const QByteArray& key) { secrets.secrets.insert(kItem, key); }

  testing::LogRecorder log;
  testing::FakeSecretStore secrets;
  SystemRandom random;
  HistoryCipher cipher{secrets, random};
};

TEST_F(HistoryCipherTest, SealsNothingToThirtyThreeBytesAndOpensItAgain) {
  const auto sealed = cipher.seal({});
  ASSERT_TRUE(sealed);
  EXPECT_EQ(sealed->size(), 33);
  EXPECT_TRUE(sealed->startsWith("BRVN1"));
  const auto opened = cipher.open(*sealed);
  ASSERT_TRUE(opened);
  EXPECT_TRUE(opened->isEmpty());
}

TEST_F(HistoryCipherTest, OpensWhatItSealed) {
  for (const qsizetype size : {1, 15, 16, 17, 1'000'000}) {
    const QByteArray data(size, 'x');
    const auto sealed = cipher.seal(data);
    ASSERT_TRUE(sealed);
    EXPECT_EQ(sealed->size(), size + 33);
    EXPECT_EQ(cipher.open(*sealed), data);
  }
}

TEST_F(HistoryCipherTest, DoesNotTakeAShortEnvelopeForPlaintext) {
  EXPECT_FALSE(cipher.open("BRVN1"));
  EXPECT_FALSE(cipher.open("BRVN1" + QByteArray(27, 'x')));
}

TEST_F(HistoryCipherTest, GivesPlaintextBackAsItIs) {
  ASSERT_TRUE(cipher.hasKey());
  EXPECT_EQ(cipher.open("{\"text\":\"a\"}"), QByteArray("{\"text\":\"a\"}"));
  EXPECT_EQ(cipher.open({}), QByteArray());
  EXPECT_EQ(cipher.open("BRVN"), QByteArray("BRVN"));
}

TEST_F(HistoryCipherTest, SealsTheSameDataDifferentlyEachTime) {
  EXPECT_NE(cipher.seal("igual"), cipher.seal("igual"));
}

TEST_F(HistoryCipherTest, NoticesEveryFlippedBit) {
  const QByteArray sealed = *cipher.seal("contenido");
  for (qsizetype byte = 5; byte < sealed.size(); ++byte) {
    QByteArray altered = sealed;
    altered[byte] = static_cast<char>(altered[byte] ^ 0x10);
    EXPECT_FALSE(cipher.open(altered)) << byte;
  }
}

TEST_F(HistoryCipherTest, MakesAKeyWhenThereIsNoneAndKeepsUsingIt) {
  EXPECT_TRUE(cipher.hasKey());
  ASSERT_TRUE(secrets.secrets.contains(kItem));
  EXPECT_EQ(secrets.secrets.value(kItem).size(), 32);
  const QByteArray sealed = *cipher.seal("antes");
  HistoryCipher later(secrets, random);
  EXPECT_EQ(later.open(sealed), QByteArray("antes"));
  EXPECT_EQ(secrets.adds, 1);
}

TEST_F(HistoryCipherTest, ReportsAKeyOfSixteenBytesAndLeavesItAlone) {
  useKey(QByteArray(16, 'k'));
  EXPECT_FALSE(cipher.hasKey());
  EXPECT_EQ(log.lines(), QStringList{u"Llavero: no se pudo leer la clave (OSStatus 0)"_s});
  EXPECT_EQ(cipher.seal("claro"), QByteArray("claro"));
  EXPECT_EQ(secrets.secrets.value(kItem).size(), 16);
}

TEST_F(HistoryCipherTest, NeverMakesAKeyWhenLookingItUpFails) {
  secrets.findStatus = -25308;
  EXPECT_FALSE(cipher.hasKey());
  EXPECT_EQ(log.lines(), QStringList{u"Llavero: no se pudo leer la clave (OSStatus -25308)"_s});
  EXPECT_EQ(secrets.adds, 0);
}

TEST_F(HistoryCipherTest, HasNoKeyWhenANewOneCannotBeStored) {
  secrets.addStatus = -25299;
  EXPECT_FALSE(cipher.hasKey());
  EXPECT_EQ(log.lines(), QStringList{u"Llavero: no se pudo guardar la clave (OSStatus -25299)"_s});
  EXPECT_EQ(cipher.seal("claro"), QByteArray("claro"));
}

TEST_F(HistoryCipherTest, TellsAKeyThatIsThereAndUnreadableFromNoKeyStoreAtAll) {
  using KeyState = HistoryCipher::KeyState;
  EXPECT_EQ(cipher.keyState(), KeyState::ready);
  const auto stateWith = [this](const auto& prepare) {
    testing::FakeSecretStore other;
    prepare(other);
    return HistoryCipher(other, random).keyState();
  };
  EXPECT_EQ(stateWith([](auto& store) { store.findStatus = -25308; }), KeyState::unreadable);
  EXPECT_EQ(stateWith([](auto& store) { store.secrets.insert(kItem, QByteArray(16, 'k')); }),
            KeyState::unreadable);
  EXPECT_EQ(stateWith([](auto& store) { store.isThere = false; }), KeyState::unavailable);
  EXPECT_EQ(stateWith([](auto& store) { store.addStatus = -25299; }), KeyState::unavailable);
}

TEST_F(HistoryCipherTest, WithoutAKeyOpensPlaintextButNoEnvelope) {
  const QByteArray sealed = *cipher.seal("secreto");
  testing::FakeSecretStore broken;
  broken.findStatus = 1;
  HistoryCipher keyless(broken, random);
  EXPECT_EQ(keyless.open("claro"), QByteArray("claro"));
  EXPECT_FALSE(keyless.open(sealed));
}

TEST_F(HistoryCipherTest, CannotOpenWhatAnotherKeySealed) {
  testing::FakeSecretStore elsewhere;
  HistoryCipher other(elsewhere, random);
  EXPECT_FALSE(cipher.open(*other.seal("ajeno")));
}

TEST_F(HistoryCipherTest, WritesNothingWhenNoNonceCanBeHad) {
  useKey(QByteArray(32, 'k'));
  testing::FailingRandom noRandom;
  HistoryCipher starved(secrets, noRandom);
  EXPECT_FALSE(starved.seal("secreto"));
}

TEST_F(HistoryCipherTest, LooksTheKeyUpOnceWhoeverAsksFirst) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i)
    threads.emplace_back([this] { EXPECT_TRUE(cipher.open(*cipher.seal("x"))); });
  for (auto& thread : threads)
    thread.join();
  EXPECT_EQ(secrets.finds, 1);
  EXPECT_EQ(secrets.adds, 1);
}

}  // namespace
}  // namespace nimbrel
