#include "app/CommandLine.h"

#include <QCoreApplication>
#include <algorithm>

namespace nimbrel {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

QString helpText() {
  return Texts::tr(
      "Uso: nimbrel [OPCIÓN]\n"
      "     nimbrel nimbrel://add?text=TEXTO[&source=iphone|ipad|mac]…\n"
      "     nimbrel copy-latest | search TEXTO | toggle-capture | paste-from COLECCIÓN |\n"
      "             collections | show | quit [--json] [--notify]\n"
      "     nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [ARCHIVO]\n"
      "     nimbrel transform TRANSFORMACIÓN [ARCHIVO]\n"
      "\n"
      "Nimbrel guarda lo que copias, cifrado, y lo pega donde estés: ⇧⌘V, u otro atajo de\n"
      "los ajustes, abre el panel (la tecla ⌘ es Súper). Si ya está en marcha, otro\n"
      "arranque muestra su panel.\n"
      "\n"
      "Una dirección nimbrel://add añade al historial un texto de otro dispositivo.\n"
      "\n"
      "copy-latest pone en el portapapeles el último texto que no es secreto; search los\n"
      "escribe, veinte como mucho; toggle-capture pausa o reanuda la captura; paste-from\n"
      "pega lo último de una colección y collections las enumera; show muestra el panel\n"
      "(con --collections, para elegir una) y quit termina el programa. --json da la\n"
      "respuesta para un programa y --notify la muestra en el escritorio. Estado de salida:\n"
      "3 Nimbrel no está disponible, 4 no hay texto, 5 la colección no lo tiene, 6 sin\n"
      "desbloquear, 7 sin permiso para pegar, 8 demasiadas peticiones, 9 no contesta.\n"
      "\n"
      "  -h, --help     muestra esta ayuda y termina\n"
      "  -v, --version  muestra la versión y termina\n"
      "\n"
      "classify dice si un texto es secreto: none (no), soft (un código de un solo uso)\n"
      "o hard (una credencial, una tarjeta, una cuenta). Lee la entrada estándar o un\n"
      "archivo; el estado de salida es 0 sea cual sea la respuesta.\n"
      "\n"
      "  --source ID    la aplicación en la que se copió\n"
      "  --no-codes     no busca códigos de un solo uso\n"
      "  --multiline    mira también cada línea y cada palabra\n"
      "  --lines        responde a cada línea de la entrada por separado\n"
      "\n"
      "transform escribe el texto transformado por una de estas: uppercase, lowercase,\n"
      "titleCase, trimWhitespace, removeLineBreaks, urlEncode, urlDecode, base64Encode,\n"
      "base64Decode, formatJSON, compactJSON.\n");
}

/// Anywhere before "--", after which everything is a file's name.
bool asksForHelp(const QStringList& arguments) {
  const auto isHelp = [](const QString& argument) { return argument == u"--help" || argument == u"-h"; };
  const auto end = std::find(arguments.begin(), arguments.end(), QStringLiteral("--"));
  return std::any_of(arguments.begin(), end, isHelp);
}

bool isUrl(const QString& argument) {
  return argument.startsWith(u"nimbrel:", Qt::CaseInsensitive);
}

PrintCommand misuse(const QString& message) {
  return {Texts::tr("nimbrel: %1\n«nimbrel --help» muestra la ayuda.\n").arg(message), 2};
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& version) {
  if (std::all_of(arguments.begin(), arguments.end(), isUrl)) return RunCommand{arguments};
  const QString& first = arguments.first();
  if (asksForHelp(arguments)) return PrintCommand{helpText(), 0};
  if (first == u"--version" || first == u"-v")
    return PrintCommand{QStringLiteral("nimbrel %1\n").arg(version), 0};
  if (const auto asked = parseInstanceCommand(arguments)) {
    if (const auto* const error = std::get_if<UsageError>(&*asked)) return misuse(error->message);
    return std::get<InstanceCommand>(*asked);
  }
  const auto text = parseTextCommand(arguments);
  if (!text) return misuse(Texts::tr("opción desconocida «%1»").arg(printable(first)));
  if (const auto* const error = std::get_if<UsageError>(&*text)) return misuse(error->message);
  return std::get<TextCommand>(*text);
}

}  // namespace nimbrel
