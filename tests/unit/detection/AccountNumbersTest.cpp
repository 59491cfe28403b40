#include "capture/detection/AccountNumbers.h"

#include <gmock/gmock.h>

#include "unit/detection/SecretTexts.h"

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;

QString groupsOfFour(const QString& text) {
  QString grouped;
  for (qsizetype i = 0; i < text.size(); i += 4)
    grouped += (i > 0 ? u" "_s : QString()) + text.mid(i, 4);
  return grouped;
}

/// The same number with another last digit, which no longer checks.
QString spoiled(QString number) {
  number.back() = QChar(u'0' + (number.back().digitValue() + 1) % 10);
  return number;
}

TEST(Luhn, PassesKnownNumbers) {
  for (const QString& number :
       {u"4111111111111111"_s, u"5500005555555559"_s, u"378282246310005"_s, u"6011000990139424"_s,
        u"3530111333300000"_s, u"30569309025904"_s, u"79927398713"_s})
    EXPECT_TRUE(passesLuhn(number)) << qPrintable(number);
}

TEST(Luhn, FailsWithAnyOtherLastDigit) {
  for (QChar last = u'0'; last <= u'9'; last = QChar(last.unicode() + 1))
    EXPECT_EQ(passesLuhn(u"7992739871"_s + last), last == u'3');
}

TEST(Luhn, PassesAnEmptyText) {
  EXPECT_TRUE(passesLuhn(u""_s));
}

TEST(Luhn, FailsWithAnythingThatIsNoDigit) {
  for (const QString& text : {u"4111 1111 1111 1111"_s, u"411111111111111x"_s, u"-"_s, u"½"_s, u"0\u0301"_s,
                              u"00\r\n"_s, QString(QChar(0xd800)), u"0٫0"_s})
    EXPECT_FALSE(passesLuhn(text)) << qPrintable(text);
}

TEST(Luhn, ReadsDigitsOfEveryScript) {
  EXPECT_TRUE(passesLuhn(u"٧٩٩٢٧٣٩٨٧١٣"_s));
  EXPECT_TRUE(passesLuhn(u"７９９２７３９８７１３"_s));
  EXPECT_TRUE(passesLuhn(u"𝟕𝟗𝟗𝟐𝟕𝟑𝟗𝟖𝟕𝟏𝟑"_s));
  EXPECT_FALSE(passesLuhn(u"٧٩٩٢٧٣٩٨٧١٤"_s));
  // Numerals that stand for ten and more.
  EXPECT_TRUE(passesLuhn(u"Ⅹ"_s));
  EXPECT_FALSE(passesLuhn(u"Ⅻ"_s));
}

TEST(CardNumber, IsFoundInEveryLengthInUse) {
  testing::SecretTexts texts(1);
  for (int length = 12; length <= 20; ++length) {
    const bool inUse = length >= 13 && length <= 19;
    for (int round = 0; round < 50; ++round) {
      const QString card = texts.cardNumber(length);
      for (const QString& written : {card, groupsOfFour(card), groupsOfFour(card).replace(u' ', u'-')}) {
        EXPECT_EQ(isCardNumber(written), inUse) << qPrintable(written);
        EXPECT_FALSE(isCardNumber(spoiled(written))) << qPrintable(written);
      }
      const bool first = u"3456"_s.contains(card[0]);
      EXPECT_EQ(containsCardNumber(u"tarjeta "_s + card + u", ayer"_s), inUse && first) << qPrintable(card);
      EXPECT_FALSE(containsCardNumber(u"tarjeta "_s + spoiled(card) + u", ayer"_s)) << qPrintable(card);
    }
  }
}

TEST(CardNumber, DemandsTheFirstDigitOfACardInsideALine) {
  EXPECT_TRUE(isCardNumber(u"1000000000009"_s));
  EXPECT_FALSE(containsCardNumber(u"1000000000009"_s));
  for (const QString& card :
       {u"378282246310005"_s, u"4111111111111111"_s, u"5500005555555559"_s, u"6011000990139424"_s})
    EXPECT_TRUE(containsCardNumber(card)) << qPrintable(card);
}

TEST(CardNumber, TouchesNoOtherDigit) {
  EXPECT_FALSE(containsCardNumber(u"94111111111111111111111"_s));
  EXPECT_TRUE(containsCardNumber(u"x4111111111111111x"_s));
  EXPECT_TRUE(containsCardNumber(u"(4111-1111-1111-1111)"_s));
}

TEST(CardNumber, TakesOneSeparatorAtATime) {
  EXPECT_FALSE(containsCardNumber(u"tarjeta 4111  1111  1111  1111"_s));
  EXPECT_FALSE(containsCardNumber(u"tarjeta 4111 - 1111 - 1111 - 1111"_s));
  EXPECT_FALSE(containsCardNumber(u"tarjeta 4111.1111.1111.1111"_s));
  EXPECT_TRUE(containsCardNumber(u"tarjeta 4-1-1-1-1-1-1-1-1-1-1-1-1-1-1-1"_s));
}

TEST(CardNumber, IsTheSecondNumberOfALineToo) {
  EXPECT_TRUE(containsCardNumber(u"no 4111111111111112, sí 4111111111111111"_s));
}

TEST(CardNumber, HasAsciiDigitsInsideALine) {
  EXPECT_FALSE(containsCardNumber(u"tarjeta ４１１１１１１１１１１１１１１１"_s));
  EXPECT_FALSE(containsCardNumber(u""_s));
  EXPECT_FALSE(containsCardNumber(u"tarjeta"_s));
}

/// Examples that the registry of IBAN formats gives for each country.
const std::vector<QString> kCountries{u"AD1200012030200359100100"_s,
                                      u"AE070331234567890123456"_s,
                                      u"AL47212110090000000235698741"_s,
                                      u"AT611904300234573201"_s,
                                      u"AZ21NABZ00000000137010001944"_s,
                                      u"BA391290079401028494"_s,
                                      u"BE68539007547034"_s,
                                      u"BG80BNBG96611020345678"_s,
                                      u"BH67BMAG00001299123456"_s,
                                      u"BR9700360305000010009795493P1"_s,
                                      u"CH9300762011623852957"_s,
                                      u"CR05015202001026284066"_s,
                                      u"CY17002001280000001200527600"_s,
                                      u"CZ6508000000192000145399"_s,
                                      u"DE89370400440532013000"_s,
                                      u"DK5000400440116243"_s,
                                      u"DO28BAGR00000001212453611324"_s,
                                      u"EE382200221020145685"_s,
                                      u"ES9121000418450200051332"_s,
                                      u"FI2112345600000785"_s,
                                      u"FO6264600001631634"_s,
                                      u"FR1420041010050500013M02606"_s,
                                      u"GB29NWBK60161331926819"_s,
                                      u"GE29NB0000000101904917"_s,
                                      u"GI75NWBK000000007099453"_s,
                                      u"GL8964710001000206"_s,
                                      u"GR1601101250000000012300695"_s,
                                      u"GT82TRAJ01020000001210029690"_s,
                                      u"HR1210010051863000160"_s,
                                      u"HU42117730161111101800000000"_s,
                                      u"IE29AIBK93115212345678"_s,
                                      u"IL620108000000099999999"_s,
                                      u"IS140159260076545510730339"_s,
                                      u"IT60X0542811101000000123456"_s,
                                      u"JO94CBJO0010000000000131000302"_s,
                                      u"KW81CBKU0000000000001234560101"_s,
                                      u"KZ86125KZT5004100100"_s,
                                      u"LB62099900000001001901229114"_s,
                                      u"LI21088100002324013AA"_s,
                                      u"LT121000011101001000"_s,
                                      u"LU280019400644750000"_s,
                                      u"LV80BANK0000435195001"_s,
                                      u"MC5811222000010123456789030"_s,
                                      u"MD24AG000225100013104168"_s,
                                      u"ME25505000012345678951"_s,
                                      u"MK07250120000058984"_s,
                                      u"MR1300020001010000123456753"_s,
                                      u"MT84MALT011000012345MTLCAST001S"_s,
                                      u"MU17BOMM0101101030300200000MUR"_s,
                                      u"NL91ABNA0417164300"_s,
                                      u"NO9386011117947"_s,
                                      u"PK36SCBL0000001123456702"_s,
                                      u"PL61109010140000071219812874"_s,
                                      u"PT50000201231234567890154"_s,
                                      u"QA58DOHB00001234567890ABCDEFG"_s,
                                      u"RO49AAAA1B31007593840000"_s,
                                      u"RS35260005601001611379"_s,
                                      u"SA0380000000608010167519"_s,
                                      u"SE4550000000058398257466"_s,
                                      u"SI56263300012039086"_s,
                                      u"SK3112000000198742637541"_s,
                                      u"SM86U0322509800000000270100"_s,
                                      u"TN5910006035183598478831"_s,
                                      u"TR330006100519786457841326"_s,
                                      u"VG96VPVG0000012345678901"_s,
                                      u"XK051212012345678906"_s};

class IbanTable : public ::testing::TestWithParam<QString> {};

TEST_P(IbanTable, IsValidInEveryWriting) {
  const QString iban = GetParam();
  EXPECT_TRUE(isValidIBAN(iban));
  EXPECT_TRUE(isValidIBAN(groupsOfFour(iban)));
  EXPECT_TRUE(isValidIBAN(iban.toLower()));
  EXPECT_TRUE(isValidIBAN(u"  "_s + groupsOfFour(iban) + u" "_s));
}

TEST_P(IbanTable, IsFoundInALine) {
  const QString iban = GetParam();
  for (const QString& written : {iban, groupsOfFour(iban)}) {
    EXPECT_TRUE(containsIBAN(u"cuenta "_s + written + u" (Ana)"_s));
    EXPECT_TRUE(containsIBAN(written));
    EXPECT_FALSE(containsIBAN(u"cuenta "_s + written.toLower()));
    EXPECT_FALSE(containsIBAN(u"cuentaX"_s + written));
    EXPECT_FALSE(containsIBAN(written + u"x"_s));
  }
}

TEST_P(IbanTable, IsInvalidWithAnyOtherDigit) {
  const QString iban = GetParam();
  for (qsizetype i = 0; i < iban.size(); ++i) {
    if (!iban[i].isDigit()) continue;
    QString wrong = iban;
    wrong[i] = QChar(u'0' + (iban[i].digitValue() + 1) % 10);
    EXPECT_FALSE(isValidIBAN(wrong)) << qPrintable(wrong);
    EXPECT_FALSE(containsIBAN(u"cuenta "_s + wrong)) << qPrintable(wrong);
  }
}

INSTANTIATE_TEST_SUITE_P(Countries, IbanTable, ::testing::ValuesIn(kCountries),
                         [](const auto& test) { return test.param.first(2).toStdString(); });

TEST(Iban, HasFifteenToThirtyFourCharacters) {
  testing::SecretTexts texts(2);
  for (int round = 0; round < 200; ++round) {
    const QString iban = texts.iban();
    EXPECT_EQ(isValidIBAN(iban), iban.size() <= 34) << qPrintable(iban);
  }
  EXPECT_TRUE(isValidIBAN(u"NO9386011117947"_s));
  EXPECT_FALSE(isValidIBAN(u"NO938601111794"_s));
}

TEST(Iban, BeginsWithTwoLettersAndTwoDigits) {
  EXPECT_FALSE(isValidIBAN(u"9E1221000418450200051332"_s));
  EXPECT_FALSE(isValidIBAN(u"ESA121000418450200051332"_s));
  EXPECT_FALSE(isValidIBAN(u""_s));
  EXPECT_FALSE(isValidIBAN(u"ES"_s));
}

TEST(Iban, HasNothingButLettersDigitsAndPlainSpaces) {
  EXPECT_FALSE(isValidIBAN(u"ES91-2100-0418-4502-0005-1332"_s));
  EXPECT_FALSE(isValidIBAN(u"ES91\u00a02100 0418 4502 0005 1332"_s));
  EXPECT_FALSE(isValidIBAN(u"ES91\t2100 0418 4502 0005 1332"_s));
  EXPECT_FALSE(isValidIBAN(u"ES91 2100 0418 4502 0005 133２"_s));
  EXPECT_FALSE(isValidIBAN(u"ES91 2100 0418 4502 0005 1332\u0301"_s));
}

TEST(Iban, HasTheCapitalsOfWhatIsWritten) {
  // MALT and MTLCAST with a long s and with a ligature, whose capitals are plain letters.
  EXPECT_TRUE(isValidIBAN(u"mt84malt011000012345mtlca\u017ft001\u017f"_s));
  EXPECT_TRUE(isValidIBAN(u"mt84malt011000012345mtlca\ufb06001s"_s));
  EXPECT_FALSE(isValidIBAN(u"mt84malt011000012345mtlcañt001s"_s));
}

TEST(Iban, IsNotFoundInGroupsOfAnotherSize) {
  EXPECT_FALSE(containsIBAN(u"cuenta ES912 1000 4184 5020 0051 332"_s));
  EXPECT_FALSE(containsIBAN(u"cuenta ES91  2100  0418  4502  0005  1332"_s));
}

TEST(Iban, IsTheSecondOneOfALineToo) {
  EXPECT_TRUE(containsIBAN(u"no ES9121000418450200051333, sí NO9386011117947"_s));
  EXPECT_TRUE(containsIBAN(u"no AB12, sí NO9386011117947"_s));
}

}  // namespace
}  // namespace nimbrel
