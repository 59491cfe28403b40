#include "app/Doctor.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace nimbrel {
namespace {

using namespace Qt::StringLiterals;
using Grade = Finding::Grade;

/// Where everything works.
DoctorFacts wellFacts() {
  DoctorFacts facts;
  facts.desktop = {.hasDisplay = true,
                   .canPressKeys = true,
                   .hasTray = true,
                   .hasSessionBus = true,
                   .hasLockAction = true,
                   .takenHotKeys = {true, true},
                   .hasImageHelper = true,
                   .recognitionLanguages = {u"spa"_s, u"eng"_s}};
  facts.isRunning = true;
  facts.storageDirectory = u"/home/ana/Nimbrel"_s;
  facts.canWriteStorage = true;
  facts.database = {DatabaseHealth::State::sound, {}, 3, 0};
  facts.keyStore = SecretLookup::Outcome::found;
  return facts;
}

/// Those findings that are not all right.
QStringList complaints(const DoctorFacts& facts) {
  QStringList found;
  for (const Finding& finding : diagnose(facts)) {
    if (finding.grade != Grade::works) found.append(finding.subject);
    EXPECT_EQ(finding.grade == Grade::works, finding.advice.isEmpty()) << qPrintable(finding.subject);
  }
  return found;
}

TEST(Doctor, HasNoComplaintsWhereEverythingWorks) {
  EXPECT_TRUE(complaints(wellFacts()).isEmpty());
}

TEST(Doctor, ComplainsOfEachThingThatDoesNot) {
  const QList<std::pair<std::function<void(DoctorFacts&)>, QString>> faults{
      {[](DoctorFacts& facts) {
         facts.isRunning = false;
         facts.desktop.takenHotKeys = {false, false};
       },
       u"Programa"_s},
      {[](DoctorFacts& facts) { facts.canWriteStorage = false; }, u"Carpeta"_s},
      {[](DoctorFacts& facts) { facts.database.state = DatabaseHealth::State::damaged; }, u"Historial"_s},
      {[](DoctorFacts& facts) { facts.database.state = DatabaseHealth::State::untouchable; }, u"Historial"_s},
      {[](DoctorFacts& facts) { facts.database.unreadable = 1; }, u"Historial"_s},
      {[](DoctorFacts& facts) { facts.setAside = {u"x"_s}; }, u"Historial apartado"_s},
      {[](DoctorFacts& facts) { facts.keyStore.reset(); }, u"Almacén de claves"_s},
      {[](DoctorFacts& facts) { facts.keyStore = SecretLookup::Outcome::unavailable; },
       u"Almacén de claves"_s},
      {[](DoctorFacts& facts) { facts.keyStore = SecretLookup::Outcome::failed; }, u"Almacén de claves"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasDisplay = false; }, u"Escritorio"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasForeignWindows = true; }, u"Escritorio"_s},
      {[](DoctorFacts& facts) {
         facts.desktop.takenHotKeys = {false, true};
       },
       u"Atajo ⇧⌘V"_s},
      {[](DoctorFacts& facts) { facts.desktop.canPressKeys = false; }, u"Pegar"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasTray = false; }, u"Bandeja"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasImageHelper = false; }, u"Texto en imágenes"_s},
      {[](DoctorFacts& facts) { facts.desktop.recognitionLanguages = {u"eng"_s}; }, u"Texto en imágenes"_s},
      {[](DoctorFacts& facts) { facts.lockObstacle = u"no hay"_s; }, u"Protección de secretos"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasLockAction = false; }, u"Protección de secretos"_s},
      {[](DoctorFacts& facts) { facts.desktop.hasSessionBus = false; }, u"D-Bus"_s}};
  for (const auto& [spoil, subject] : faults) {
    DoctorFacts facts = wellFacts();
    spoil(facts);
    EXPECT_EQ(complaints(facts), QStringList{subject}) << qPrintable(subject);
  }
}

TEST(Doctor, AMissingKeyIsAFaultOnlyWhenSomethingNeedsIt) {
  DoctorFacts facts = wellFacts();
  facts.keyStore = SecretLookup::Outcome::notFound;
  EXPECT_TRUE(complaints(facts).isEmpty());
  facts.database.unreadable = 3;
  EXPECT_EQ(complaints(facts), (QStringList{u"Historial"_s, u"Almacén de claves"_s}));
}

TEST(Doctor, AHotKeyOfAnotherProgramIsOneWhileNimbrelDoesNotRun) {
  DoctorFacts facts = wellFacts();
  facts.isRunning = false;
  EXPECT_EQ(complaints(facts), (QStringList{u"Programa"_s, u"Atajo ⇧⌘V"_s, u"Atajo ⇧⌘N"_s}));
}

TEST(Doctor, AnUnusableLockIsWorseWhenItIsOn) {
  DoctorFacts facts = wellFacts();
  facts.lockObstacle = u"no hay"_s;
  const auto grade = [&] {
    const auto findings = diagnose(facts);
    return std::find_if(findings.begin(), findings.end(),
                        [](const Finding& finding) { return finding.subject == u"Protección de secretos"; })
        ->grade;
  };
  EXPECT_EQ(grade(), Grade::partly);
  facts.settings.lockMode = LockMode::sensitiveOnly;
  EXPECT_EQ(grade(), Grade::fails);
}

TEST(Doctor, ReportsALineEachWithTheAdviceBelow) {
  EXPECT_EQ(report({{Grade::works, u"A"_s, u"bien"_s, {}},
                    {Grade::partly, u"B"_s, u"regular"_s, u"Haz algo."_s},
                    {Grade::fails, u"C"_s, u"mal"_s, u"Haz más."_s}}),
            u"✓ A: bien\n! B: regular\n    Haz algo.\n✗ C: mal\n    Haz más.\n");
}

TEST(Doctor, SpeaksOfWhatAMacHas) {
  DoctorFacts facts = wellFacts();
  facts.desktop.kind = DesktopFacts::Kind::mac;
  facts.desktop.takenHotKeys = {};
  facts.desktop.recognitionLanguages = {u"es-ES"_s};
  facts.desktop.canPressKeys = false;
  EXPECT_TRUE(complaints(facts).isEmpty()) << "whether it may press keys is not asked for here";
  EXPECT_THAT(report(diagnose(facts)).toStdString(), ::testing::HasSubstr("macOS"));
  facts.desktop.recognitionLanguages = {};
  facts.lockObstacle = u"sin contraseña"_s;
  facts.keyStore = SecretLookup::Outcome::unavailable;
  EXPECT_EQ(complaints(facts).size(), 3);
  for (const QString& foreign : {u"X11"_s, u"XTEST"_s, u"D-Bus"_s, u"polkit"_s, u"tesseract"_s, u"gnome"_s}) {
    EXPECT_FALSE(report(diagnose(facts)).contains(foreign)) << qPrintable(foreign);
  }
}

}  // namespace
}  // namespace nimbrel
