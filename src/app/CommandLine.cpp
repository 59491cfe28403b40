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
      "Uso: nimbrel [--panel | --help | --version]\n"
      "     nimbrel nimbrel://add?text=TEXTO[&source=iphone|ipad|mac]…\n"
      "     nimbrel copy-latest | search TEXTO | toggle-capture | collections  [--json] [--notify]\n"
      "     nimbrel paste-from COLECCIÓN | show [--collections] | quit  [--notify]\n"
      "     nimbrel export [--secrets] [--passphrase-file ARCHIVO] ARCHIVO\n"
      "     nimbrel import [--passphrase-file ARCHIVO] ARCHIVO\n"
      "     nimbrel doctor [--repair]\n"
      "     nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [ARCHIVO]\n"
      "     nimbrel transform TRANSFORMACIÓN [ARCHIVO]\n"
      "\n"
      "Nimbrel guarda lo que copias, cifrado, y lo pega donde estés: ⇧⌘V, u otro atajo de\n"
      "los ajustes, abre el panel (la tecla ⌘ es Súper). Si ya está en marcha, otro\n"
      "arranque muestra su panel.\n"
      "\n"
      "  --panel        muestra el panel al arrancar\n"
      "  -h, --help     muestra esta ayuda y termina\n"
      "  -v, --version  muestra la versión y termina\n"
      "\n"
      "Una dirección nimbrel://add añade al historial un texto de otro dispositivo.\n"
      "\n"
      "copy-latest pone en el portapapeles el último texto que no es secreto y search\n"
      "escribe los que tienen unas palabras, veinte como mucho; toggle-capture pausa o\n"
      "reanuda la captura; collections enumera las colecciones y paste-from pega lo último\n"
      "de una; show muestra el panel, o las colecciones para elegir; quit termina Nimbrel.\n"
      "\n"
      "  --json         da la respuesta para un programa\n"
      "  --notify       muestra la respuesta en el escritorio\n"
      "  --no-start     no arranca Nimbrel para esto\n"
      "\n"
      "export escribe el historial en un archivo cifrado con una contraseña, sin los\n"
      "secretos si no se piden con --secrets, e import lo añade al de otro equipo, con\n"
      "Nimbrel parado. doctor dice qué funciona y qué no; con --repair, y Nimbrel parado,\n"
      "aparta una base de datos dañada y salva en otra lo que se puede leer.\n"
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
      "base64Decode, formatJSON, compactJSON.\n"
      "\n"
      "Estado de salida: 0 hecho, 1 falló, 2 mal escrito, 3 Nimbrel no está disponible,\n"
      "4 no hay texto, 5 la colección no lo tiene, 6 sin desbloquear, 7 sin permiso para\n"
      "pegar, 8 demasiadas peticiones, 9 no contesta.\n");
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

CommandLine parseCommandLine(const QStringList& given, const QString& version) {
  // Somebody who opens an address does not ask for the panel.
  QStringList arguments = given;
  const bool showPanel = arguments.value(0) == u"--panel";
  if (showPanel) arguments.removeFirst();
  if (std::all_of(arguments.begin(), arguments.end(), isUrl))
    return RunCommand{arguments, showPanel && arguments.isEmpty()};
  if (showPanel) return misuse(Texts::tr("--panel no admite «%1»").arg(printable(arguments.first())));
  const QString& first = arguments.first();
  if (asksForHelp(arguments)) return PrintCommand{helpText(), 0};
  if (first == u"--version" || first == u"-v")
    return PrintCommand{QStringLiteral("nimbrel %1\n").arg(version), 0};
  if (const auto asked = parseInstanceCommand(arguments)) {
    if (const auto* const error = std::get_if<UsageError>(&*asked)) return misuse(error->message);
    return std::get<InstanceCommand>(*asked);
  }
  if (const auto asked = parseHistoryCommand(arguments)) {
    if (const auto* const error = std::get_if<UsageError>(&*asked)) return misuse(error->message);
    return std::get<HistoryCommand>(*asked);
  }
  const auto text = parseTextCommand(arguments);
  if (!text) return misuse(Texts::tr("opción desconocida «%1»").arg(printable(first)));
  if (const auto* const error = std::get_if<UsageError>(&*text)) return misuse(error->message);
  return std::get<TextCommand>(*text);
}

}  // namespace nimbrel
