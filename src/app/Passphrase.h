#pragma once

#include <QByteArray>
#include <QString>
#include <variant>

#include "memory/Wipe.h"

namespace nimbrel {

/// The shortest passphrase that an archive is written with, in characters: it stands against machines that
/// have all the time in the world.
inline constexpr int kMinPassphrase = 8;

/// What a passphrase is wanted for: one to be made is typed twice.
enum class PassphraseUse { make, know };

/// Reads a passphrase from the first line of a file, "-" being the standard input, or with an empty name from
/// the terminal, where it is not shown. As UTF-8 in normalisation form C, or why there is none. *Waits* for
/// the user.
[[nodiscard]] std::variant<WipedBytes, QString> readPassphrase(const QString& file, PassphraseUse use);

}  // namespace nimbrel
