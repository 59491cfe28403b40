#include "capture/detection/TokenPatterns.h"

#include <algorithm>
#include <array>
#include <vector>

namespace nimbrel {
namespace {

/// A pattern with its expression compiled.
struct CompiledToken {
  TokenPattern token;
  BoundedPattern pattern;
};

/// Those that compile, in their order.
std::vector<CompiledToken> compile(const QList<TokenPattern>& tokens, bool anywhere) {
  std::vector<CompiledToken> compiled;
  for (const TokenPattern& token : tokens) {
    if (token.anywhere != anywhere) continue;
    CompiledToken made{token, BoundedPattern(token.expression)};
    if (made.pattern.isValid()) compiled.push_back(std::move(made));
  }
  return compiled;
}

bool mayMatch(const TokenPattern& token, QStringView text) {
  return text.size() >= token.minimumSize &&
         std::any_of(token.prefixes.begin(), token.prefixes.end(),
                     [&](const QString& prefix) { return text.startsWith(prefix); });
}

}  // namespace

const QList<TokenPattern>& tokenPatterns() {
  static const QList<TokenPattern> patterns{
      {.expression = QStringLiteral("-----BEGIN [A-Z ]*PRIVATE KEY-----"),
       .prefixes = {QStringLiteral("-----BEGIN ")},
       .minimumSize = 27,
       .anywhere = true},
      {.expression = QStringLiteral(R"(^eyJ[A-Za-z0-9_-]{5,}\.eyJ[A-Za-z0-9_-]{5,}\.[A-Za-z0-9_-]*$)"),
       .prefixes = {QStringLiteral("eyJ")},
       .minimumSize = 18},
      {.expression = QStringLiteral("^(sk|pk|rk)-[A-Za-z0-9_-]{20,}$"),
       .prefixes = {QStringLiteral("sk-"), QStringLiteral("pk-"), QStringLiteral("rk-")},
       .minimumSize = 23},
      {.expression = QStringLiteral("^(sk|pk|rk)_(live|test)_[A-Za-z0-9]{16,}$"),
       .prefixes = {QStringLiteral("sk_"), QStringLiteral("pk_"), QStringLiteral("rk_")},
       .minimumSize = 24},
      {.expression = QStringLiteral("^whsec_[A-Za-z0-9]{20,}$"),
       .prefixes = {QStringLiteral("whsec_")},
       .minimumSize = 26},
      {.expression = QStringLiteral("^(ghp|gho|ghu|ghs|ghr)_[A-Za-z0-9]{30,}$"),
       .prefixes = {QStringLiteral("gh")},
       .minimumSize = 34},
      {.expression = QStringLiteral("^github_pat_[A-Za-z0-9_]{40,}$"),
       .prefixes = {QStringLiteral("github_pat_")},
       .minimumSize = 51},
      {.expression = QStringLiteral("^glpat-[A-Za-z0-9_-]{20,}$"),
       .prefixes = {QStringLiteral("glpat-")},
       .minimumSize = 26},
      {.expression = QStringLiteral("^npm_[A-Za-z0-9]{36}$"),
       .prefixes = {QStringLiteral("npm_")},
       .minimumSize = 40},
      {.expression = QStringLiteral("^hf_[A-Za-z0-9]{30,}$"),
       .prefixes = {QStringLiteral("hf_")},
       .minimumSize = 33},
      {.expression = QStringLiteral(R"(^SG\.[A-Za-z0-9_-]{16,}\.[A-Za-z0-9_-]{16,}$)"),
       .prefixes = {QStringLiteral("SG.")},
       .minimumSize = 36},
      {.expression = QStringLiteral("^xox[abprs]-[A-Za-z0-9-]{10,}$"),
       .prefixes = {QStringLiteral("xox")},
       .minimumSize = 15},
      {.expression = QStringLiteral("^AKIA[0-9A-Z]{16}$"),
       .prefixes = {QStringLiteral("AKIA")},
       .minimumSize = 20},
      {.expression = QStringLiteral("^AIza[0-9A-Za-z_-]{35}$"),
       .prefixes = {QStringLiteral("AIza")},
       .minimumSize = 39},
      // The class is Unicode's white space, spelled out: the shorthand means other characters in other
      // versions of the library.
      {.expression = QStringLiteral(R"(^Bearer[\p{Z}\x{09}-\x{0d}\x{85}]+[A-Za-z0-9._~+/=-]{20,}$)"),
       .prefixes = {QStringLiteral("Bearer")},
       .minimumSize = 27},
  };
  return patterns;
}

bool isToken(QStringView text) {
  static const auto tokens = compile(tokenPatterns(), false);
  // Nearly every text has another first letter than all of them.
  static const auto firstLetters = [] {
    std::array<bool, 128> letters{};
    for (const CompiledToken& token : tokens) {
      for (const QString& prefix : token.token.prefixes)
        letters.at(prefix.front().unicode()) = true;
    }
    return letters;
  }();
  if (text.isEmpty() || text.front() >= u'\x80' || !firstLetters[text.front().unicode()]) return false;
  return std::any_of(tokens.begin(), tokens.end(), [&](const CompiledToken& token) {
    return mayMatch(token.token, text) && token.pattern.matches(text);
  });
}

bool holdsPrivateKey(QStringView text) {
  static const auto blocks = compile(tokenPatterns(), true);
  return std::any_of(blocks.begin(), blocks.end(), [&](const CompiledToken& block) {
    const qsizetype from = text.indexOf(block.token.prefixes.first());
    return from >= 0 && block.pattern.search(text, from).outcome == BoundedPattern::Outcome::found;
  });
}

}  // namespace nimbrel
