#include "capture/transforms/JsonLayout.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QByteArrayView>
#include <QList>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace nimbrel {
namespace {

constexpr qsizetype kIndentedLevels = 32;

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

/// A value, or the name of a member, which stands before its value.
struct Node {
  enum class Kind { literal, number, string, object, array };

  Kind kind;
  /// Where a string or a literal begins in the text of all of them; for a number, which one it is.
  std::size_t offset = 0;
  std::size_t length = 0;
  /// The index after the last node inside this one.
  std::size_t end = 0;
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
  [[nodiscard]] QByteArrayView text(const Node& node) const {
    return QByteArrayView(texts_).sliced(static_cast<qsizetype>(node.offset),
                                         static_cast<qsizetype>(node.length));
  }

 private:
  bool literal(QByteArrayView word) { return addText(Node::Kind::literal, word); }
  bool addText(Node::Kind kind, QByteArrayView text) {
    const auto offset = static_cast<std::size_t>(texts_.size());
    texts_.append(text.data(), text.size());
    return add({.kind = kind, .offset = offset, .length = static_cast<std::size_t>(text.size())});
  }
  bool add(Node node) {
    node.end = nodes_.size() + 1;
    nodes_.push_back(node);
    return true;
  }
  bool open(Node::Kind kind) {
    open_.push_back(nodes_.size());
    return add({.kind = kind});
  }
  bool close() {
    nodes_[open_.back()].end = nodes_.size();
    open_.pop_back();
    return true;
  }

  std::vector<Node> nodes_;
  QByteArray texts_;
  std::vector<std::size_t> open_;
  std::size_t numbers_ = 0;
};

/// Writes values anew, without calling itself for what is inside them.
class NodeWriter final {
 public:
  NodeWriter(const NodeReader& values, const std::vector<QByteArrayView>& numbers, JsonLayout layout)
      : values_(values), numbers_(numbers), layout_(layout) {}

  QByteArray write() {
    writeValue(0);
    while (!open_.empty()) {
      if (open_.back().next == open_.back().children.size())
        closeContainer();
      else
        writeChild();
    }
    return std::move(out_);
  }

 private:
  /// A container that is being written: its elements, or the names of its members in their new order.
  struct Open {
    bool object;
    std::vector<std::size_t> children;
    std::size_t next = 0;
  };

  [[nodiscard]] const Node& node(std::size_t index) const { return values_.nodes()[index]; }

  void writeValue(std::size_t index) {
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

  void openContainer(std::size_t index) {
    const bool object = node(index).kind == Node::Kind::object;
    out_ += object ? '{' : '[';
    open_.push_back({.object = object, .children = childrenOf(index)});
    if (!open_.back().children.empty()) return;
    out_ += object ? '}' : ']';
    open_.pop_back();
  }

  void closeContainer() {
    const bool object = open_.back().object;
    open_.pop_back();
    breakLine();
    out_ += object ? '}' : ']';
  }

  void writeChild() {
    Open& container = open_.back();
    if (container.next > 0) out_ += ',';
    breakLine();
    std::size_t index = container.children[container.next++];
    if (container.object) {
      writeString(values_.text(node(index)));
      out_ += layout_ == JsonLayout::indented ? ": " : ":";
      ++index;
    }
    writeValue(index);
  }

  [[nodiscard]] std::vector<std::size_t> childrenOf(std::size_t index) const {
    const bool object = node(index).kind == Node::Kind::object;
    std::vector<std::size_t> children;
    for (std::size_t child = index + 1; child < node(index).end; child = node(object ? child + 1 : child).end)
      children.push_back(child);
    if (!object) return children;
    // The order of UTF-8 is that of code points.
    std::stable_sort(children.begin(), children.end(), [this](std::size_t a, std::size_t b) {
      return values_.text(node(a)) < values_.text(node(b));
    });
    return children;
  }

  void writeString(QByteArrayView text) {
    rapidjson::StringBuffer quoted;
    rapidjson::Writer<rapidjson::StringBuffer> writer(quoted);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    out_.append(quoted.GetString(), static_cast<qsizetype>(quoted.GetSize()));
  }

  void breakLine() {
    if (layout_ == JsonLayout::compact) return;
    out_ += '\n';
    out_.append(2 * std::min(static_cast<qsizetype>(open_.size()), kIndentedLevels), ' ');
  }

  const NodeReader& values_;
  const std::vector<QByteArrayView>& numbers_;
  const JsonLayout layout_;
  std::vector<Open> open_;
  QByteArray out_;
};

}  // namespace

std::optional<QByteArray> laidOutJson(const QByteArray& json, JsonLayout layout) {
  // The parser takes it for the text's end.
  if (json.contains('\0')) return std::nullopt;
  const NumberlessJson numberless = withoutNumbers(json);
  constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag |
                              rapidjson::kParseNumbersAsStringsFlag;
  rapidjson::MemoryStream stream(numberless.text.constData(),
                                 static_cast<std::size_t>(numberless.text.size()));
  rapidjson::Reader reader;
  NodeReader values;
  if (!reader.Parse<kFlags>(stream, values)) return std::nullopt;
  return NodeWriter(values, numberless.numbers, layout).write();
}

}  // namespace nimbrel
