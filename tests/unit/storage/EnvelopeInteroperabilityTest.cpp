#include <gmock/gmock.h>

#include <QProcess>

#include "storage/HistoryCipher.h"
#include "support/Fakes.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

TEST(EnvelopeInteroperability, IsOpenedByAnotherProgram) {
  const QByteArray key =
      QByteArray::fromHex("000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
  testing::FakeSecretStore secrets;
  secrets.secrets.insert(u"Nimbrel.history-key/history"_s, key);
  SystemRandom random;
  HistoryCipher cipher(secrets, random);
  const QByteArray content = u"canción \"secreta\"\n"_s.toUtf8();
  QProcess opener;
  // Debian's own interpreter, which has the cryptography module; others on the path may not.
  opener.start(u"/usr/bin/python3"_s,
               {QStringLiteral(NIMBREL_OPEN_ENVELOPE), QString::fromLatin1(key.toHex())});
  opener.write(*cipher.seal(content));
  opener.closeWriteChannel();
  ASSERT_TRUE(opener.waitForFinished());
  EXPECT_EQ(opener.readAllStandardError(), QByteArray());
  EXPECT_EQ(opener.readAllStandardOutput(), content);
}

}  // namespace
}  // namespace nimbrel
