#include "capture/transforms/JsonLayout.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QByteArrayView>
#include <QList>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace nimbrel {
namespace {

constexpr qsizetype kIndent = 2;
/// What indentation may take of a result, in bytes.
constexpr qsizetype kMaxIndentation = 32 * 1024 * 1024;
constexpr qsizetype kMaxIndentedLevels = 32;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Whether a word is a number of the JSON grammar (RFC 8259, section 6).
bool isNumber(QByteArrayView word) {
  qsizetype i = 0;
  const auto digits = [&] {
    const qsizetype begin = i;
    while (i < word.size() && isDigit(word[i]))
      ++i;
    return i > begin;
  };
  const auto skip = [&](QByteArrayView characters) {
    const bool there = i < word.size() && characters.contains(word[i]);
    i += there ? 1 : 0;
    return there;
  };
  skip("-");
  const bool zero = i < word.size() && word[i] == '0';
  const qsizetype whole = i;
  if (!digits() || (zero && i > whole + 1)) return false;
  if (skip(".") && !digits()) return false;
  if (skip("eE")) {
    skip("+-");
    if (!digits()) return false;
  }
  return i == word.size();
}

/// A text whose numbers have been taken out and replaced by zeros: the parser refuses numbers beyond those of
/// the machine, even when it does not read them.
struct NumberlessJson {
  QByteArray text;
  std::vector<QByteArrayView> numbers;
};

NumberlessJson withoutNumbers(const QByteArray& json) {
  NumberlessJson result;
  result.text.reserve(json.size());
  bool inString = false;
  for (qsizetype i = 0; i < json.size();) {
    const char c = json[i];
    qsizetype length = 1;
    if (inString) {
      if (c == '\\' && i + 1 < json.size()) length = 2;
      inString = c != '"';
    } else if (c == '"') {
      inString = true;
    } else if (c == '-' || isDigit(c)) {
      while (i + length < json.size() &&
             (isDigit(json[i + length]) || QByteArrayView("+-.eE").contains(json[i + length])))
        ++length;
      if (const QByteArrayView word(json.constData() + i, length); isNumber(word)) {
        result.numbers.push_back(word);
        result.text += '0';
        i += length;
        continue;
      }
      // Left as it is, for the parser to refuse.
    }
    result.text.append(json.constData() + i, length);
    i += length;
  }
  return result;
}

/// Of values and bytes: no text has as many as could not be counted with it.
using Index = std::uint32_t;
constexpr qsizetype kMaxSize = std::numeric_limits<Index>::max();

/// A value, or the name of a member, which stands before its value.
struct Node {
  enum class Kind { literal, number, string, object, array };

  Kind kind;
  /// Where a string or a literal begins in the text of all of them; for a number, which one it is.
  Index offset = 0;
  Index length = 0;
  /// The index after the last node inside this one.
  Index end = 0;
};

/// All values of a text, one after the other, as the parser tells of them.
class NodeReader final : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, NodeReader> {
 public:
  bool Null() { return literal("null"); }
  bool Bool(bool value) { return literal(value ? "true" : "false"); }
  bool RawNumber(const char*, rapidjson::SizeType, bool) {
    return add({.kind = Node::Kind::number, .offset = numbers_++});
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return addText(Node::Kind::string, QByteArrayView(text, static_cast<qsizetype>(length)));
  }
  bool Key(const char* text, rapidjson::SizeType length, bool copy) { return String(text, length, copy); }
  bool StartObject() { return open(Node::Kind::object); }
  bool StartArray() { return open(Node::Kind::array); }
  bool EndObject(rapidjson::SizeType) { return close(); }
  bool EndArray(rapidjson::SizeType) { return close(); }

  [[nodiscard]] const std::vector<Node>& nodes() const { return nodes_; }
  /// False when an escape stood for half a character.
  [[nodiscard]] bool hasWholeCharacters() const { return texts_.isValidUtf8(); }
  [[nodiscard]] QByteArrayView text(const Node& node) const {
    return QByteArrayView(texts_).sliced(static_cast<qsizetype>(node.offset),
                                         static_cast<qsizetype>(node.length));
  }

 private:
  bool literal(QByteArrayView word) { return addText(Node::Kind::literal, word); }
  bool addText(Node::Kind kind, QByteArrayView text) {
    const auto offset = static_cast<Index>(texts_.size());
    texts_.append(text.data(), text.size());
    return add({.kind = kind, .offset = offset, .length = static_cast<Index>(text.size())});
  }
  bool add(Node node) {
    node.end = static_cast<Index>(nodes_.size() + 1);
    nodes_.push_back(node);
    return true;
  }
  bool open(Node::Kind kind) {
    open_.push_back(static_cast<Index>(nodes_.size()));
    return add({.kind = kind});
  }
  bool close() {
    nodes_[open_.back()].end = static_cast<Index>(nodes_.size());
    open_.pop_back();
    return true;
  }

  std::vector<Node> nodes_;
  QByteArray texts_;
  std::vector<Index> open_;
  Index numbers_ = 0;
};

/// How many levels deep lines are moved in a text of so many values. A container takes two lines.
qsizetype indentedLevels(std::size_t values) {
  const auto lines = static_cast<qsizetype>(2 * values + 1);
  return std::clamp<qsizetype>(kMaxIndentation / kIndent / lines, 1, kMaxIndentedLevels);
}

/// Writes values anew, without calling itself for what is inside them.
class NodeWriter final {
 public:
  NodeWriter(const NodeReader& values, const std::vector<QByteArrayView>& numbers, JsonLayout layout)
      : values_(values), numbers_(numbers), layout_(layout), levels_(indentedLevels(values.nodes().size())) {}

  QByteArray write() {
    writeValue(0);
    while (!open_.empty()) {
      if (isWritten(open_.back()))
        closeContainer();
      else
        writeChild();
    }
    return std::move(out_);
  }

 private:
  /// A container that is being written.
  struct Open {
    Index index;
    /// The next of its elements; of its members, where in the order of them its name stands.
    Index next;
    /// Where the order of its members begins.
    Index order;
  };

  [[nodiscard]] const Node& node(Index index) const { return values_.nodes()[index]; }

  void writeValue(Index index) {
    const Node& value = node(index);
    switch (value.kind) {
      case Node::Kind::literal:
        out_ += values_.text(value);
        return;
      case Node::Kind::number:
        out_ += numbers_[value.offset];
        return;
      case Node::Kind::string:
        return writeString(values_.text(value));
      case Node::Kind::object:
      case Node::Kind::array:
        return openContainer(index);
    }
  }

  [[nodiscard]] bool isObject(const Open& container) const {
    return node(container.index).kind == Node::Kind::object;
  }

  void openContainer(Index index) {
    const bool object = node(index).kind == Node::Kind::object;
    const bool empty = node(index).end == index + 1;
    out_ += object ? '{' : '[';
    if (empty) {
      out_ += object ? '}' : ']';
      return;
    }
    const auto order = static_cast<Index>(order_.size());
    if (object) appendOrder(index);
    open_.push_back({.index = index, .next = object ? order : index + 1, .order = order});
  }

  [[nodiscard]] bool isWritten(const Open& container) const {
    return container.next == (isObject(container) ? order_.size() : node(container.index).end);
  }

  void closeContainer() {
    const Open container = open_.back();
    open_.pop_back();
    order_.resize(container.order);
    breakLine();
    out_ += isObject(container) ? '}' : ']';
  }

  void writeChild() {
    Open& container = open_.back();
    const bool object = isObject(container);
    const bool first = container.next == (object ? container.order : container.index + 1);
    if (!first) out_ += ',';
    breakLine();
    if (!object) {
      const Index element = container.next;
      container.next = node(element).end;
      return writeValue(element);
    }
    const Index name = order_[container.next++];
    writeString(values_.text(node(name)));
    out_ += layout_ == JsonLayout::indented ? ": " : ":";
    writeValue(name + 1);
  }

  /// Appends the names of an object's members, sorted; those of the same name stay in their order.
  void appendOrder(Index index) {
    const auto begin = static_cast<std::ptrdiff_t>(order_.size());
    for (Index name = index + 1; name < node(index).end; name = node(name + 1).end)
      order_.push_back(name);
    // The order of UTF-8 is that of code points.
    std::stable_sort(order_.begin() + begin, order_.end(),
                     [this](Index a, Index b) { return values_.text(node(a)) < values_.text(node(b)); });
  }

  void writeString(QByteArrayView text) {
    quoted_.Clear();
    rapidjson::Writer<rapidjson::StringBuffer> writer(quoted_);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    out_.append(quoted_.GetString(), static_cast<qsizetype>(quoted_.GetSize()));
  }

  void breakLine() {
    if (layout_ == JsonLayout::compact) return;
    out_ += '\n';
    out_.append(kIndent * std::min(static_cast<qsizetype>(open_.size()), levels_), ' ');
  }

  const NodeReader& values_;
  const std::vector<QByteArrayView>& numbers_;
  const JsonLayout layout_;
  const qsizetype levels_;
  std::vector<Open> open_;
  /// The sorted names of all objects that are being written, the innermost last.
  std::vector<Index> order_;
  /// One string at a time, as it is written.
  rapidjson::StringBuffer quoted_;
  QByteArray out_;
};

}  // namespace

std::optional<QByteArray> laidOutJson(const QByteArray& json, JsonLayout layout) {
  // The parser takes a NUL for the text's end.
  if (json.contains('\0') || json.size() > kMaxSize) return std::nullopt;
  const NumberlessJson numberless = withoutNumbers(json);
  QByteArrayView text = numberless.text;
  if (constexpr QByteArrayView kByteOrderMark("\xef\xbb\xbf"); text.startsWith(kByteOrderMark))
    text = text.sliced(kByteOrderMark.size());
  constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                              rapidjson::kParseNumbersAsStringsFlag;
  rapidjson::MemoryStream stream(text.data(), static_cast<std::size_t>(text.size()));
  rapidjson::Reader reader;
  NodeReader values;
  if (!reader.Parse<kFlags>(stream, values) || !values.hasWholeCharacters()) return std::nullopt;
  return NodeWriter(values, numberless.numbers, layout).write();
}

}  // namespace nimbrel
