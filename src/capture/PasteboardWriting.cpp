#include "capture/PasteboardWriting.h"

namespace nimbrel {
namespace {

PasteboardContent fileContent(const ClipItem& clip) {
  PasteboardContent content;
  QStringList paths;
  const auto lines = QStringView(*clip.fileURLString).split(u'\n', Qt::SkipEmptyParts);
  for (const QStringView line : lines) {
    const QUrl url(line.toString(), QUrl::StrictMode);
    if (!url.isLocalFile()) continue;
    content.fileUrls.append(url);
    paths.append(url.toLocalFile());
  }
  content.text = paths.isEmpty() ? clip.text : paths.join(u'\n');
  return content;
}

void addRichForm(const ClipItem& clip, SideFiles& files, PasteboardContent& content) {
  if (!clip.richFile) return;
  const auto data = files.loadRich(*clip.richFile);
  if (!data) return;
  if (clip.richFile->endsWith(u".rtf")) content.rtf = data;
  if (clip.richFile->endsWith(u".html")) content.html = data;
}

}  // namespace

PasteboardContent pasteboardContentOf(const ClipItem& clip, bool plainOnly, SideFiles& files,
                                      const SnippetValues& snippets) {
  if (clip.isFile()) return fileContent(clip);
  PasteboardContent content;
  content.concealed = clip.isSensitive();
  if (clip.isImage()) {
    content.png = files.loadImage(*clip.imageFile);
    return content;
  }
  content.text = expandSnippets(clip, snippets);
  if (!plainOnly && !clip.isSensitive()) addRichForm(clip, files, content);
  return content;
}

}  // namespace nimbrel
