#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

#include "platform/ImageCodec.h"
#include "platform/PasteboardContent.h"

/// How X11 selection targets and their bytes translate to the pasteboard's types and values. Pure functions.
namespace nimbrel {

enum class PasteboardFormat { files, text, rtf, html, image };

/// The uniform type identifiers of what is offered. Targets without a counterpart keep their own name; a
/// password manager's hint becomes the concealed mark.
[[nodiscard]] QStringList typesOfTargets(const QStringList& targets);

/// The offered targets that carry a format, best first.
[[nodiscard]] QStringList candidateTargets(PasteboardFormat format, const QStringList& targets);

/// Decodes text by its target: ISO 8859-1 for STRING (ICCCM 2.6.2), UTF-8 for
/// all others, with U+FFFD in place of invalid bytes. NULs at the end, a habit of C programs, are left out.
[[nodiscard]] QString decodeText(const QString& target, const QByteArray& bytes);

/// The URLs of a text/uri-list (RFC 2483) or of a file manager's x-special/gnome-copied-files.
[[nodiscard]] QList<QUrl> decodeUrls(const QByteArray& bytes);

/// The targets under which content is offered, with the bytes of each.
[[nodiscard]] QHash<QString, QByteArray> offeredTargets(const PasteboardContent& content);

/// The further targets under which an image is offered, and the format that each of them needs.
[[nodiscard]] QHash<QString, ImageCodec::Format> convertedTargets(const PasteboardContent& content);

}  // namespace nimbrel
