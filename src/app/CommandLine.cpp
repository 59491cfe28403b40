#include "app/CommandLine.h"

namespace nimbrel {
namespace {

QString helpText() {
  return QStringLiteral(
      "Uso: nimbrel [OPCIÓN]\n"
      "\n"
      "Nimbrel guarda lo que copias, cifrado, y lo pega donde estés: ⇧⌘V abre el panel\n"
      "(la tecla ⌘ es Súper). Si ya está en marcha, otro arranque muestra su panel.\n"
      "\n"
      "  -h, --help     muestra esta ayuda y termina\n"
      "  -v, --version  muestra la versión y termina\n");
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& version) {
  if (arguments.isEmpty()) return {};
  const QString& first = arguments.first();
  if (first == u"--help" || first == u"-h") return {CommandLine::Action::print, helpText(), 0};
  if (first == u"--version" || first == u"-v")
    return {CommandLine::Action::print, QStringLiteral("nimbrel %1\n").arg(version), 0};
  return {CommandLine::Action::print,
          QStringLiteral("nimbrel: opción desconocida «%1»\n\n").arg(first) + helpText(), 2};
}

}  // namespace nimbrel
