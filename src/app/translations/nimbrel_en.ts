<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="es">
<context>
    <name>BrevinAppShortcuts</name>
    <message>
        <source>Copiar lo último en %1</source>
        <translation>Copy the latest in %1</translation>
    </message>
    <message>
        <source>Copiar último</source>
        <translation>Copy latest</translation>
    </message>
    <message>
        <source>Buscar historial en %1</source>
        <translation>Search history in %1</translation>
    </message>
    <message>
        <source>Buscar historial</source>
        <translation>Search history</translation>
    </message>
    <message>
        <source>Pausar o reanudar captura en %1</source>
        <translation>Pause or resume capture in %1</translation>
    </message>
    <message>
        <source>Pausar captura</source>
        <translation>Pause capture</translation>
    </message>
    <message>
        <source>Pegar desde colección en %1</source>
        <translation>Paste from collection in %1</translation>
    </message>
    <message>
        <source>Pegar colección</source>
        <translation>Paste collection</translation>
    </message>
</context>
<context>
    <name>BrevinIntentError</name>
    <message>
        <source>Nimbrel no está disponible.</source>
        <translation>Nimbrel is not available.</translation>
    </message>
    <message>
        <source>No hay texto seguro en el historial.</source>
        <translation>There is no safe text in the history.</translation>
    </message>
    <message>
        <source>La colección no contiene texto seguro.</source>
        <translation>The collection holds no safe text.</translation>
    </message>
    <message>
        <source>No se pudo desbloquear Brevin.</source>
        <translation>Brevin could not be unlocked.</translation>
    </message>
    <message>
        <source>Concede permiso de Accesibilidad para pegar automáticamente.</source>
        <translation>Grant the Accessibility permission to paste automatically.</translation>
    </message>
</context>
<context>
    <name>BusObject</name>
    <message>
        <source>Demasiadas peticiones seguidas.</source>
        <translation>Too many requests in a row.</translation>
    </message>
</context>
<context>
    <name>ClipRow</name>
    <message>
        <source>Plantilla</source>
        <translation>Template</translation>
    </message>
    <message>
        <source>Se borrará automáticamente</source>
        <translation>Deletes itself</translation>
    </message>
    <message>
        <source>Imagen copiada</source>
        <translation>Copied image</translation>
    </message>
    <message>
        <source>ahora</source>
        <translation>now</translation>
    </message>
    <message>
        <source>hace %1 min</source>
        <translation>%1 min ago</translation>
    </message>
    <message>
        <source>hace %1 h</source>
        <translation>%1 h ago</translation>
    </message>
    <message>
        <source>ayer</source>
        <translation>yesterday</translation>
    </message>
    <message>
        <source>Copiado desde tu %1 vía Portapapeles Universal</source>
        <translation>Copied from your %1 with Universal Clipboard</translation>
    </message>
    <message>
        <source>Origen: %1</source>
        <translation>Source: %1</translation>
    </message>
    <message>
        <source>%1 car.</source>
        <translation>%1 chars</translation>
    </message>
    <message>
        <source>Elemento oculto</source>
        <translation>Hidden item</translation>
    </message>
    <message>
        <source>Fijado</source>
        <translation>Pinned</translation>
    </message>
    <message>
        <source>d MMM</source>
        <translation>MMM d</translation>
    </message>
    <message>
        <source>d MMM yyyy</source>
        <translation>MMM d, yyyy</translation>
    </message>
    <message>
        <source>Portapapeles Universal</source>
        <translation>Universal Clipboard</translation>
    </message>
    <message>
        <source>Continuidad</source>
        <translation>Continuity</translation>
    </message>
    <message>
        <source>Elemento desbloqueado</source>
        <translation>Item unlocked</translation>
    </message>
    <message>
        <source>En la colección %1</source>
        <translation>In the collection %1</translation>
    </message>
    <message>
        <source>En la cola</source>
        <translation>In the queue</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>nimbrel: %1
«nimbrel --help» muestra la ayuda.
</source>
        <translation>nimbrel: %1
“nimbrel --help” shows the help.
</translation>
    </message>
    <message>
        <source>opción desconocida «%1»</source>
        <translation>unknown option “%1”</translation>
    </message>
    <message>
        <source>falta el nombre del archivo</source>
        <translation>the name of the file is missing</translation>
    </message>
    <message>
        <source>falta la aplicación de --source</source>
        <translation>the application of --source is missing</translation>
    </message>
    <message>
        <source>classify no conoce la opción «%1»</source>
        <translation>classify does not know the option “%1”</translation>
    </message>
    <message>
        <source>classify lee un solo archivo</source>
        <translation>classify reads one file only</translation>
    </message>
    <message>
        <source>transform no conoce la opción «%1»</source>
        <translation>transform does not know the option “%1”</translation>
    </message>
    <message>
        <source>falta la transformación: %1</source>
        <translation>the transformation is missing: %1</translation>
    </message>
    <message>
        <source>transform lee un solo archivo</source>
        <translation>transform reads one file only</translation>
    </message>
    <message>
        <source>no hay ninguna transformación «%1»; las que hay: %2</source>
        <translation>there is no transformation “%1”; there are: %2</translation>
    </message>
    <message>
        <source>el texto es demasiado largo (el máximo son %1 MB)</source>
        <translation>the text is too long (%1 MB at most)</translation>
    </message>
    <message>
        <source>el texto no es UTF-8 válido</source>
        <translation>the text is not valid UTF-8</translation>
    </message>
    <message>
        <source>no se puede leer el texto: %1</source>
        <translation>the text cannot be read: %1</translation>
    </message>
    <message>
        <source>no se puede escribir el resultado: %1</source>
        <translation>the result cannot be written: %1</translation>
    </message>
    <message>
        <source>línea %1: %2</source>
        <translation>line %1: %2</translation>
    </message>
    <message>
        <source>«%1» no se puede aplicar a este texto</source>
        <translation>“%1” cannot be applied to this text</translation>
    </message>
    <message>
        <source>no se puede leer «%1»: %2</source>
        <translation>“%1” cannot be read: %2</translation>
    </message>
    <message>
        <source>nimbrel: no hay memoria para este texto
</source>
        <translation>nimbrel: there is no memory for this text
</translation>
    </message>
    <message>
        <source>nimbrel: ya está en marcha, pero no contesta
</source>
        <translation>nimbrel: it is running already, but does not answer
</translation>
    </message>
    <message>
        <source>«%1»: %2</source>
        <translation>“%1”: %2</translation>
    </message>
    <message>
        <source>--panel no admite «%1»</source>
        <translation>--panel does not take “%1”</translation>
    </message>
    <message>
        <source>%1 no conoce la opción «%2»</source>
        <translation>%1 does not know the option “%2”</translation>
    </message>
    <message>
        <source>%1 necesita el nombre de un archivo</source>
        <translation>%1 needs the name of one file</translation>
    </message>
    <message>
        <source>no se puede leer la clave del historial; desbloquea el almacén de claves</source>
        <translation>the key of the history cannot be read; unlock the key store</translation>
    </message>
    <message>
        <source>Nimbrel está en marcha; termínalo con «nimbrel quit» y repite la orden</source>
        <translation>Nimbrel is running; end it with “nimbrel quit” and repeat the command</translation>
    </message>
    <message>
        <source>no es un archivo de Nimbrel, o es de una versión más reciente</source>
        <translation>this is no archive of Nimbrel, or one of a newer version</translation>
    </message>
    <message>
        <source>la contraseña no es correcta</source>
        <translation>the passphrase is not right</translation>
    </message>
    <message>
        <source>el archivo está dañado o incompleto; no se ha importado nada</source>
        <translation>the archive is damaged or incomplete; nothing was imported</translation>
    </message>
    <message>
        <source>el archivo no se puede leer</source>
        <translation>the archive cannot be read</translation>
    </message>
    <message>
        <source>abrir el archivo pide demasiada memoria</source>
        <translation>opening the archive takes too much memory</translation>
    </message>
    <message>
        <source>«%1» ya existe</source>
        <translation>“%1” exists already</translation>
    </message>
    <message>
        <source>aún no hay historial</source>
        <translation>there is no history yet</translation>
    </message>
    <message>
        <source>no se puede escribir «%1»: %2</source>
        <translation>“%1” cannot be written: %2</translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) exportado(s).</source>
        <translation>
            <numerusform>%n item exported.</numerusform>
            <numerusform>%n items exported.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n secreto(s) quedan fuera; --secrets los incluye.</source>
        <translation>
            <numerusform>%n secret is left out; --secrets includes it.</numerusform>
            <numerusform>%n secrets are left out; --secrets includes them.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) no se pudieron leer.</source>
        <translation>
            <numerusform>%n item could not be read.</numerusform>
            <numerusform>%n items could not be read.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) añadido(s).</source>
        <translation>
            <numerusform>%n item added.</numerusform>
            <numerusform>%n items added.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) ya estaban.</source>
        <translation>
            <numerusform>%n item was there already.</numerusform>
            <numerusform>%n items were there already.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) han caducado o no se guardan según los ajustes.</source>
        <translation>
            <numerusform>%n item has expired, or is none to be kept by the settings.</numerusform>
            <numerusform>%n items have expired, or are none to be kept by the settings.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) no se pudieron importar.</source>
        <translation>
            <numerusform>%n item could not be imported.</numerusform>
            <numerusform>%n items could not be imported.</numerusform>
        </translation>
    </message>
    <message>
        <source>El historial guarda %1 elementos sin fijar y ahora hay %2: los más antiguos se borrarán con la próxima copia, si antes no subes el límite en los ajustes.</source>
        <translation>The history keeps %1 items that are not pinned, and there are %2 now: the oldest go with the next copy, unless you raise the limit in the settings before.</translation>
    </message>
    <message>
        <source>no se puede leer «%1»</source>
        <translation>“%1” cannot be read</translation>
    </message>
    <message>
        <source>Aún no hay historial que reparar.</source>
        <translation>There is no history to repair yet.</translation>
    </message>
    <message>
        <source>La base de datos está bien; no hay nada que reparar.</source>
        <translation>The database is fine; there is nothing to repair.</translation>
    </message>
    <message>
        <source>la base de datos no se puede abrir: %1</source>
        <translation>the database cannot be opened: %1</translation>
    </message>
    <message>
        <source>no se pudo reparar: %1</source>
        <translation>it could not be repaired: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) salvado(s).</source>
        <translation>
            <numerusform>%n item saved.</numerusform>
            <numerusform>%n items saved.</numerusform>
        </translation>
    </message>
    <message>
        <source>La base de datos dañada queda como %1.</source>
        <translation>The damaged database is kept as %1.</translation>
    </message>
    <message>
        <source>falta el texto que buscar</source>
        <translation>the text to look for is missing</translation>
    </message>
    <message>
        <source>falta el nombre de la colección</source>
        <translation>the name of the collection is missing</translation>
    </message>
    <message>
        <source>sobra «%1»</source>
        <translation>“%1” is too much</translation>
    </message>
    <message>
        <source>Demasiadas peticiones seguidas.</source>
        <translation>Too many requests in a row.</translation>
    </message>
    <message>
        <source>Nimbrel está en marcha, pero no contesta.</source>
        <translation>Nimbrel is running, but does not answer.</translation>
    </message>
    <message>
        <source>nimbrel: no se puede escribir el resultado: %1
</source>
        <translation>nimbrel: the result cannot be written: %1
</translation>
    </message>
    <message>
        <source>no se puede leer la contraseña</source>
        <translation>the passphrase cannot be read</translation>
    </message>
    <message>
        <source>la contraseña está vacía</source>
        <translation>the passphrase is empty</translation>
    </message>
    <message>
        <source>la contraseña debe tener al menos %1 caracteres</source>
        <translation>the passphrase must have at least %1 characters</translation>
    </message>
    <message>
        <source>no hay terminal en la que pedir la contraseña; usa --passphrase-file</source>
        <translation>there is no terminal to ask for the passphrase on; use --passphrase-file</translation>
    </message>
    <message>
        <source>Contraseña del archivo: </source>
        <translation>Passphrase of the archive: </translation>
    </message>
    <message>
        <source>Otra vez: </source>
        <translation>Once more: </translation>
    </message>
    <message>
        <source>las contraseñas no coinciden</source>
        <translation>the passphrases differ</translation>
    </message>
    <message>
        <source>nimbrel: no hay ningún escritorio X11 a la vista
</source>
        <translation>nimbrel: no X11 desktop is in sight
</translation>
    </message>
    <message>
        <source>Uso: nimbrel [--panel | --help | --version]
     nimbrel nimbrel://add?text=TEXTO[&amp;source=iphone|ipad|mac]…
     nimbrel copy-latest | search TEXTO | toggle-capture | collections  [--json] [--notify]
     nimbrel paste-from COLECCIÓN | show [--collections] | quit  [--notify]
     nimbrel export [--secrets] [--passphrase-file ARCHIVO] ARCHIVO
     nimbrel import [--passphrase-file ARCHIVO] ARCHIVO
     nimbrel doctor [--repair]
     nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [ARCHIVO]
     nimbrel transform TRANSFORMACIÓN [ARCHIVO]

Nimbrel guarda lo que copias, cifrado, y lo pega donde estés: ⇧⌘V, u otro atajo de
los ajustes, abre el panel (la tecla ⌘ es Súper). Si ya está en marcha, otro
arranque muestra su panel.

  --panel        muestra el panel al arrancar
  -h, --help     muestra esta ayuda y termina
  -v, --version  muestra la versión y termina

Una dirección nimbrel://add añade al historial un texto de otro dispositivo.

copy-latest pone en el portapapeles el último texto que no es secreto y search
escribe los que tienen unas palabras, veinte como mucho; toggle-capture pausa o
reanuda la captura; collections enumera las colecciones y paste-from pega lo último
de una; show muestra el panel, o las colecciones para elegir; quit termina Nimbrel.

  --json         da la respuesta para un programa
  --notify       muestra la respuesta en el escritorio
  --no-start     no arranca Nimbrel para esto

export escribe el historial en un archivo cifrado con una contraseña, sin los
secretos si no se piden con --secrets, e import lo añade al de otro equipo, con
Nimbrel parado. doctor dice qué funciona y qué no; con --repair, y Nimbrel parado,
aparta una base de datos dañada y salva en otra lo que se puede leer.

classify dice si un texto es secreto: none (no), soft (un código de un solo uso)
o hard (una credencial, una tarjeta, una cuenta). Lee la entrada estándar o un
archivo; el estado de salida es 0 sea cual sea la respuesta.

  --source ID    la aplicación en la que se copió
  --no-codes     no busca códigos de un solo uso
  --multiline    mira también cada línea y cada palabra
  --lines        responde a cada línea de la entrada por separado

transform escribe el texto transformado por una de estas: uppercase, lowercase,
titleCase, trimWhitespace, removeLineBreaks, urlEncode, urlDecode, base64Encode,
base64Decode, formatJSON, compactJSON.

Estado de salida: 0 hecho, 1 falló, 2 mal escrito, 3 Nimbrel no está disponible,
4 no hay texto, 5 la colección no lo tiene, 6 sin desbloquear, 7 sin permiso para
pegar, 8 demasiadas peticiones, 9 no contesta.
</source>
        <translation>Usage: nimbrel [--panel | --help | --version]
       nimbrel nimbrel://add?text=TEXT[&amp;source=iphone|ipad|mac]…
       nimbrel copy-latest | search TEXT | toggle-capture | collections  [--json] [--notify]
       nimbrel paste-from COLLECTION | show [--collections] | quit  [--notify]
       nimbrel export [--secrets] [--passphrase-file FILE] ARCHIVE
       nimbrel import [--passphrase-file FILE] ARCHIVE
       nimbrel doctor [--repair]
       nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [FILE]
       nimbrel transform TRANSFORMATION [FILE]

Nimbrel keeps what you copy, encrypted, and pastes it wherever you are: ⇧⌘V, or
another shortcut of the settings, opens the panel (the key ⌘ is Super). When it runs
already, another start shows its panel.

  --panel        shows the panel when it starts
  -h, --help     shows this help and ends
  -v, --version  shows the version and ends

A nimbrel://add address adds a text of another device to the history.

copy-latest puts the latest text that is no secret on the clipboard, and search writes
those that hold some words, twenty at most; toggle-capture pauses or resumes capture;
collections lists the collections, and paste-from pastes the latest of one; show shows
the panel, or the collections to choose from; quit ends Nimbrel.

  --json         gives the answer for a program
  --notify       shows the answer on the desktop
  --no-start     does not start Nimbrel for this

export writes the history to an archive encrypted with a passphrase, without the secrets
unless --secrets asks for them, and import adds it to another computer&apos;s, while Nimbrel
is not running. doctor says what works and what does not; with --repair, while Nimbrel is
not running, it sets a damaged database aside and saves what can be read in another.

classify says whether a text is secret: none (no), soft (a one-time code) or hard
(a credential, a card, an account). It reads the standard input or a file; the exit
status is 0 whatever the answer.

  --source ID    the application in which it was copied
  --no-codes     does not look for one-time codes
  --multiline    looks at each line and each word too
  --lines        answers for each line of the input apart

transform writes the text transformed by one of these: uppercase, lowercase,
titleCase, trimWhitespace, removeLineBreaks, urlEncode, urlDecode, base64Encode,
base64Decode, formatJSON, compactJSON.

Exit status: 0 done, 1 it failed, 2 misused, 3 Nimbrel is not available, 4 there is no
text, 5 nor in the collection, 6 not unlocked, 7 no right to paste, 8 too many requests,
9 no answer.
</translation>
    </message>
    <message>
        <source>falta el archivo de --passphrase-file</source>
        <translation>the file of --passphrase-file is missing</translation>
    </message>
    <message>
        <source>el historial no se puede leer entero; «nimbrel doctor» dice más</source>
        <translation>the history cannot be read whole; “nimbrel doctor” says more</translation>
    </message>
    <message>
        <source>falta memoria</source>
        <translation>there is not enough memory</translation>
    </message>
    <message>
        <source>el historial no se puede leer o escribir; no se ha importado nada</source>
        <translation>the history cannot be read or written; nothing was imported</translation>
    </message>
    <message>
        <source>nimbrel: no hay memoria para esto
</source>
        <translation>nimbrel: there is no memory for this
</translation>
    </message>
    <message>
        <source>la contraseña no es UTF-8 válido</source>
        <translation>the passphrase is no valid UTF-8</translation>
    </message>
</context>
<context>
    <name>ContentView</name>
    <message>
        <source>↑↓ elegir   ↩ pegar imagen   ⌘T pegar su texto   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida</source>
        <translation>↑↓ choose   ↩ paste image   ⌘T paste its text   ⌘⌫ delete   ⌘P pin   ␣ quick look</translation>
    </message>
    <message>
        <source>↑↓ elegir   ↩ pegar archivo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida</source>
        <translation>↑↓ choose   ↩ paste file   ⌘⌫ delete   ⌘P pin   ␣ quick look</translation>
    </message>
    <message>
        <source>↑↓ elegir   ↩ pegar   ⌘O abrir enlace   ⌘↩ sin formato   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida</source>
        <translation>↑↓ choose   ↩ paste   ⌘O open link   ⌘↩ plain   ⌘⌫ delete   ⌘P pin   ␣ quick look</translation>
    </message>
    <message>
        <source>↑↓ elegir   ↩ pegar   ⌘1–9 directo   ⌘⌫ borrar   ⌘P fijar   ␣ vista rápida   ⌘↩ sin formato</source>
        <translation>↑↓ choose   ↩ paste   ⌘1–9 directly   ⌘⌫ delete   ⌘P pin   ␣ quick look   ⌘↩ plain</translation>
    </message>
    <message>
        <source>Buscar…</source>
        <translation>Search…</translation>
    </message>
    <message>
        <source>Buscar en el historial</source>
        <translation>Search the history</translation>
    </message>
    <message>
        <source>Borrar la búsqueda</source>
        <translation>Clear the search</translation>
    </message>
</context>
<context>
    <name>CopyLatestClipIntent</name>
    <message>
        <source>Copiar último texto</source>
        <translation>Copy latest text</translation>
    </message>
    <message>
        <source>Último texto copiado.</source>
        <translation>Latest text copied.</translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message>
        <source>Programa</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>en marcha</source>
        <translation>running</translation>
    </message>
    <message>
        <source>no está en marcha</source>
        <translation>not running</translation>
    </message>
    <message>
        <source>Arráncalo desde el menú o con «nimbrel»; los ajustes lo arrancan con la sesión.</source>
        <translation>Start it from the menu or with “nimbrel”; the settings start it with the session.</translation>
    </message>
    <message>
        <source>Historial</source>
        <translation>History</translation>
    </message>
    <message>
        <source>aún no hay ninguno</source>
        <translation>there is none yet</translation>
    </message>
    <message>
        <source>la base de datos está dañada: %1</source>
        <translation>the database is damaged: %1</translation>
    </message>
    <message>
        <source>Termina Nimbrel con «nimbrel quit» y ejecuta «nimbrel doctor --repair».</source>
        <translation>End Nimbrel with “nimbrel quit” and run “nimbrel doctor --repair”.</translation>
    </message>
    <message>
        <source>la base de datos no se puede abrir: %1</source>
        <translation>the database cannot be opened: %1</translation>
    </message>
    <message>
        <source>Mira los permisos de %1 y si la escribió una versión más reciente de Nimbrel.</source>
        <translation>Look at the rights of %1, and whether a newer version of Nimbrel has written it.</translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s)</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, de ellos %2 que no se pueden leer</source>
        <translation>%1, of them %2 that cannot be read</translation>
    </message>
    <message>
        <source>Se cifraron con otra clave: se verán si vuelve el almacén de claves en que estaba.</source>
        <translation>They were encrypted with another key: they will be seen when the key store comes back that had it.</translation>
    </message>
    <message>
        <source>Carpeta</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>no se puede escribir en %1</source>
        <translation>%1 cannot be written to</translation>
    </message>
    <message>
        <source>El historial solo vive en la memoria. Mira los permisos y el espacio libre.</source>
        <translation>The history lives in memory only. Look at the rights and at the free space.</translation>
    </message>
    <message>
        <source>Almacén de claves</source>
        <translation>Key store</translation>
    </message>
    <message>
        <source>Sin clave el historial se guarda sin cifrar: instala o arranca gnome-keyring, KWallet o KeePassXC.</source>
        <translation>Without a key the history is kept unencrypted: install or start gnome-keyring, KWallet or KeePassXC.</translation>
    </message>
    <message>
        <source>tiene la clave del historial</source>
        <translation>has the key of the history</translation>
    </message>
    <message>
        <source>responde; la clave se crea en el primer arranque</source>
        <translation>answers; the key is made at the first start</translation>
    </message>
    <message>
        <source>no hay ninguno</source>
        <translation>there is none</translation>
    </message>
    <message>
        <source>no deja leer la clave</source>
        <translation>does not let the key be read</translation>
    </message>
    <message>
        <source>Desbloquéalo y arranca Nimbrel de nuevo.</source>
        <translation>Unlock it and start Nimbrel again.</translation>
    </message>
    <message>
        <source>Atajo %1</source>
        <translation>Shortcut %1</translation>
    </message>
    <message>
        <source>lo tiene Nimbrel, u otro programa</source>
        <translation>Nimbrel has it, or another program</translation>
    </message>
    <message>
        <source>lo tiene otro programa</source>
        <translation>another program has it</translation>
    </message>
    <message>
        <source>Elige otro en los ajustes, o quítaselo al otro programa.</source>
        <translation>Choose another in the settings, or take it from the other program.</translation>
    </message>
    <message>
        <source>Nimbrel no lo tiene</source>
        <translation>Nimbrel does not have it</translation>
    </message>
    <message>
        <source>Elígelo otra vez en los ajustes, o arranca Nimbrel de nuevo.</source>
        <translation>Choose it again in the settings, or start Nimbrel again.</translation>
    </message>
    <message>
        <source>está libre</source>
        <translation>is free</translation>
    </message>
    <message>
        <source>Pegar</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>Nimbrel puede pulsar teclas</source>
        <translation>Nimbrel can press keys</translation>
    </message>
    <message>
        <source>Nimbrel no puede pulsar teclas</source>
        <translation>Nimbrel cannot press keys</translation>
    </message>
    <message>
        <source>Falta la extensión XTEST del servidor X. Pega tú con Ctrl-V.</source>
        <translation>The X server lacks the XTEST extension. Paste with Ctrl-V yourself.</translation>
    </message>
    <message>
        <source>Bandeja</source>
        <translation>Tray</translation>
    </message>
    <message>
        <source>hay una</source>
        <translation>there is one</translation>
    </message>
    <message>
        <source>no hay ninguna: el símbolo no se ve</source>
        <translation>there is none: the symbol is not to be seen</translation>
    </message>
    <message>
        <source>Todo funciona con el atajo. En GNOME hace falta la extensión AppIndicator.</source>
        <translation>Everything works with the shortcut. GNOME needs the extension AppIndicator.</translation>
    </message>
    <message>
        <source>Escritorio</source>
        <translation>Desktop</translation>
    </message>
    <message>
        <source>no hay ninguno a la vista</source>
        <translation>there is none in sight</translation>
    </message>
    <message>
        <source>Ejecuta esto en una terminal del escritorio.</source>
        <translation>Run this in a terminal of the desktop.</translation>
    </message>
    <message>
        <source>Wayland</source>
        <translation>Wayland</translation>
    </message>
    <message>
        <source>Nimbrel solo ve, por XWayland, los programas de X11: elige una sesión X11 al entrar.</source>
        <translation>Nimbrel sees only the programs of X11, through XWayland: choose an X11 session when you log in.</translation>
    </message>
    <message>
        <source>Texto en imágenes</source>
        <translation>Text in images</translation>
    </message>
    <message>
        <source>falta el ayudante nimbrel-imaging</source>
        <translation>the helper nimbrel-imaging is missing</translation>
    </message>
    <message>
        <source>No se guardan imágenes. Instala Nimbrel otra vez.</source>
        <translation>No images are kept. Install Nimbrel again.</translation>
    </message>
    <message>
        <source>apagado en los ajustes</source>
        <translation>switched off in the settings</translation>
    </message>
    <message>
        <source>faltan idiomas; hay: %1</source>
        <translation>languages are missing; there are: %1</translation>
    </message>
    <message>
        <source>Instala tesseract-ocr-spa y tesseract-ocr-eng.</source>
        <translation>Install tesseract-ocr-spa and tesseract-ocr-eng.</translation>
    </message>
    <message>
        <source>Protección de secretos</source>
        <translation>Protection of secrets</translation>
    </message>
    <message>
        <source>encendida</source>
        <translation>switched on</translation>
    </message>
    <message>
        <source>apagada en los ajustes</source>
        <translation>switched off in the settings</translation>
    </message>
    <message>
        <source>no se puede pedir la contraseña (%1)</source>
        <translation>the password cannot be asked for (%1)</translation>
    </message>
    <message>
        <source>Hacen falta polkit, su agente en la sesión y Nimbrel instalado.</source>
        <translation>This takes polkit, its agent in the session, and Nimbrel installed.</translation>
    </message>
    <message>
        <source>hay un bus de sesión</source>
        <translation>there is a session bus</translation>
    </message>
    <message>
        <source>no hay un bus de sesión</source>
        <translation>there is no session bus</translation>
    </message>
    <message>
        <source>Sin él no hay órdenes, ni almacén de claves, ni un solo Nimbrel por sesión: instala dbus-user-session.</source>
        <translation>Without it there are no commands, no key store, and no single Nimbrel in a session: install dbus-user-session.</translation>
    </message>
    <message>
        <source>no contesta</source>
        <translation>does not answer</translation>
    </message>
    <message>
        <source>Quizá espera a que lo desbloquees: busca su ventana, o entra de nuevo en la sesión.</source>
        <translation>Perhaps it waits for you to unlock it: look for its window, or log in again.</translation>
    </message>
    <message>
        <source>no tiene la clave con la que se cifró el historial</source>
        <translation>does not have the key that the history was encrypted with</translation>
    </message>
    <message>
        <source>Recupera el almacén de claves en que estaba, o el historial seguirá ilegible.</source>
        <translation>Bring back the key store that had it, or the history stays unreadable.</translation>
    </message>
    <message>
        <source>polkit no conoce la acción de Nimbrel</source>
        <translation>polkit does not know Nimbrel’s action</translation>
    </message>
    <message>
        <source>Instala el paquete, o copia app.nimbrel.Nimbrel.policy a /usr/share/polkit-1/actions.</source>
        <translation>Install the package, or copy app.nimbrel.Nimbrel.policy to /usr/share/polkit-1/actions.</translation>
    </message>
    <message>
        <source>Historial apartado</source>
        <translation>History set aside</translation>
    </message>
    <message>
        <source>Quedó al reparar, en %1. Bórralo cuando no lo necesites: también guarda lo que ya había caducado.</source>
        <translation>Left by a repair, in %1. Delete it when you do not need it: it also keeps what had expired.</translation>
    </message>
    <message>
        <source>Sin clave el historial se guarda sin cifrar: abre Acceso a Llaveros y desbloquea el llavero de inicio de sesión.</source>
        <translation>Without a key the history is kept unencrypted: open Keychain Access and unlock the login keychain.</translation>
    </message>
    <message>
        <source>Permítelo en Ajustes del Sistema → Privacidad y seguridad → Accesibilidad.</source>
        <translation>Allow it in System Settings → Privacy &amp; Security → Accessibility.</translation>
    </message>
    <message>
        <source>Actualiza macOS: el reconocimiento de texto es del sistema.</source>
        <translation>Update macOS: text recognition is the system’s.</translation>
    </message>
    <message>
        <source>Pon una contraseña a tu cuenta, y Touch ID si el Mac lo tiene.</source>
        <translation>Give your account a password, and Touch ID if the Mac has it.</translation>
    </message>
</context>
<context>
    <name>HotKeyCombo</name>
    <message>
        <source>Espacio</source>
        <translation>Space</translation>
    </message>
    <message>
        <source>Control</source>
        <translation>Control</translation>
    </message>
    <message>
        <source>Opción</source>
        <translation>Option</translation>
    </message>
    <message>
        <source>Mayúsculas</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Comando</source>
        <translation>Command</translation>
    </message>
</context>
<context>
    <name>IgnoredApp</name>
    <message>
        <source>Contraseñas</source>
        <translation>Passwords</translation>
    </message>
    <message>
        <source>Acceso a Llaveros</source>
        <translation>Keychain Access</translation>
    </message>
</context>
<context>
    <name>IntentService</name>
    <message>
        <source>El texto es demasiado largo.</source>
        <translation>The text is too long.</translation>
    </message>
</context>
<context>
    <name>LoginItem</name>
    <message>
        <source>Falta tu permiso: Ajustes del Sistema → General → Ítems de inicio.</source>
        <translation>Your permission is missing: System Settings → General → Login Items.</translation>
    </message>
    <message>
        <source>El sistema no lo ha aceptado.</source>
        <translation>The system has not accepted it.</translation>
    </message>
</context>
<context>
    <name>PasteFromCollectionIntent</name>
    <message>
        <source>Pegar desde colección</source>
        <translation>Paste from collection</translation>
    </message>
    <message>
        <source>Colección</source>
        <translation>Collection</translation>
    </message>
    <message>
        <source>Colección desde la que quieres pegar.</source>
        <translation>Collection that you want to paste from.</translation>
    </message>
    <message>
        <source>Pegar desde %1</source>
        <translation>Paste from %1</translation>
    </message>
</context>
<context>
    <name>PreviewWindow</name>
    <message>
        <source>Vista rápida</source>
        <translation>Quick look</translation>
    </message>
    <message>
        <source>Cerrar</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Nada que mostrar</source>
        <translation>Nothing to show</translation>
    </message>
    <message>
        <source>Se muestra el principio del texto.</source>
        <translation>The beginning of the text is shown.</translation>
    </message>
</context>
<context>
    <name>SearchHistoryIntent</name>
    <message>
        <source>Se encontraron %1 textos.</source>
        <translation>%1 texts were found.</translation>
    </message>
    <message>
        <source>Buscar historial</source>
        <translation>Search history</translation>
    </message>
    <message>
        <source>Texto</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Texto que quieres buscar en el historial.</source>
        <translation>Text that you want to look for in the history.</translation>
    </message>
    <message>
        <source>Buscar %1 en el historial</source>
        <translation>Search for %1 in the history</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Ajustes de Nimbrel</source>
        <translation>Nimbrel Settings</translation>
    </message>
</context>
<context>
    <name>StatusItem</name>
    <message>
        <source>Nimbrel en pausa</source>
        <translation>Nimbrel paused</translation>
    </message>
    <message>
        <source>Nimbrel: %1 en cola</source>
        <translation>Nimbrel: %1 queued</translation>
    </message>
</context>
<context>
    <name>TextTransform</name>
    <message>
        <source>Mayúsculas</source>
        <translation>Upper case</translation>
    </message>
    <message>
        <source>Minúsculas</source>
        <translation>Lower case</translation>
    </message>
    <message>
        <source>Tipo título</source>
        <translation>Title case</translation>
    </message>
    <message>
        <source>Recortar espacios</source>
        <translation>Trim spaces</translation>
    </message>
    <message>
        <source>Quitar saltos de línea</source>
        <translation>Remove line breaks</translation>
    </message>
    <message>
        <source>Codificar URL</source>
        <translation>Encode URL</translation>
    </message>
    <message>
        <source>Decodificar URL</source>
        <translation>Decode URL</translation>
    </message>
    <message>
        <source>Codificar Base64</source>
        <translation>Encode Base64</translation>
    </message>
    <message>
        <source>Decodificar Base64</source>
        <translation>Decode Base64</translation>
    </message>
    <message>
        <source>Formatear JSON</source>
        <translation>Format JSON</translation>
    </message>
    <message>
        <source>Compactar JSON</source>
        <translation>Compact JSON</translation>
    </message>
</context>
<context>
    <name>ToggleCaptureIntent</name>
    <message>
        <source>Pausar o reanudar captura</source>
        <translation>Pause or resume capture</translation>
    </message>
    <message>
        <source>Captura pausada.</source>
        <translation>Capture paused.</translation>
    </message>
    <message>
        <source>Captura reanudada.</source>
        <translation>Capture resumed.</translation>
    </message>
</context>
<context>
    <name>nimbrel::ApplicationChooser</name>
    <message>
        <source>Añadir aplicación</source>
        <translation>Add application</translation>
    </message>
    <message>
        <source>Buscar aplicación…</source>
        <translation>Search applications…</translation>
    </message>
    <message>
        <source>Aplicaciones instaladas</source>
        <translation>Installed applications</translation>
    </message>
    <message>
        <source>Añadir</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Cancelar</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Añadir la aplicación en uso: %1</source>
        <translation>Add the application in use: %1</translation>
    </message>
</context>
<context>
    <name>nimbrel::ApplicationListModel</name>
    <message>
        <source>%1 (ya está en la lista)</source>
        <translation>%1 (already in the list)</translation>
    </message>
</context>
<context>
    <name>nimbrel::ClipActions</name>
    <message>
        <source>«%1» no se puede aplicar a este texto.</source>
        <translation>“%1” cannot be applied to this text.</translation>
    </message>
    <message>
        <source>No hay ningún programa con que abrirlo.</source>
        <translation>There is no program to open it with.</translation>
    </message>
    <message>
        <source>No se puede mostrar este archivo.</source>
        <translation>This file cannot be shown.</translation>
    </message>
    <message>
        <source>Este elemento ya no está en el historial.</source>
        <translation>This item is no longer in the history.</translation>
    </message>
</context>
<context>
    <name>nimbrel::CollectionSheet</name>
    <message>
        <source>Asignar a colección</source>
        <translation>Assign to collection</translation>
    </message>
    <message>
        <source>Nombre de colección</source>
        <translation>Name of the collection</translation>
    </message>
    <message>
        <source>La colección fija este elemento para conservarlo.</source>
        <translation>The collection pins this item to keep it.</translation>
    </message>
    <message>
        <source>Asignar</source>
        <translation>Assign</translation>
    </message>
    <message>
        <source>Cancelar</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Colección %1</source>
        <translation>Collection %1</translation>
    </message>
</context>
<context>
    <name>nimbrel::ConfirmSheet</name>
    <message>
        <source>Cancelar</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>nimbrel::ContentView</name>
    <message>
        <source>Historial</source>
        <translation>History</translation>
    </message>
    <message>
        <source>Nada copiado todavía</source>
        <translation>Nothing copied yet</translation>
    </message>
    <message>
        <source>Sin resultados</source>
        <translation>No results</translation>
    </message>
    <message>
        <source>Filtrar por app o colección</source>
        <translation>Filter by app or collection</translation>
    </message>
    <message>
        <source>Opciones</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Este elemento está oculto.</source>
        <translation>This item is hidden.</translation>
    </message>
    <message>
        <source>¿Borrar el historial?</source>
        <translation>Clear the history?</translation>
    </message>
    <message numerus="yes">
        <source>Se borrarán %n elemento(s). Los fijados se conservan. No se puede deshacer.</source>
        <translation>
            <numerusform>%n item will be deleted. Pinned ones are kept. This cannot be undone.</numerusform>
            <numerusform>%n items will be deleted. Pinned ones are kept. This cannot be undone.</numerusform>
        </translation>
    </message>
    <message>
        <source>Borrar</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Elemento borrado</source>
        <translation>Item deleted</translation>
    </message>
    <message>
        <source>Deshacer</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Deshacer borrado</source>
        <translation>Undo Delete</translation>
    </message>
    <message>
        <source>No se puede pedir la contraseña en este escritorio: el elemento sigue oculto.</source>
        <translation>This desktop cannot ask for the password: the item stays hidden.</translation>
    </message>
</context>
<context>
    <name>nimbrel::FilterChips</name>
    <message>
        <source>Quitar el filtro por app</source>
        <translation>Clear the filter by app</translation>
    </message>
    <message>
        <source>Quitar el filtro por colección</source>
        <translation>Clear the filter by collection</translation>
    </message>
</context>
<context>
    <name>nimbrel::GeneralSettingsTab</name>
    <message>
        <source>Atajos de teclado</source>
        <translation>Keyboard shortcuts</translation>
    </message>
    <message>
        <source>Abrir Nimbrel</source>
        <translation>Open Nimbrel</translation>
    </message>
    <message>
        <source>Pegar siguiente en cola</source>
        <translation>Paste next in queue</translation>
    </message>
    <message>
        <source>Historial y captura</source>
        <translation>History and capture</translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s)</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
    <message>
        <source>Capacidad del historial</source>
        <translation>History size</translation>
    </message>
    <message>
        <source>Iniciar con el Mac</source>
        <translation>Start at login</translation>
    </message>
    <message>
        <source>Reconocer texto en imágenes (OCR local)</source>
        <translation>Recognise text in images (local OCR)</translation>
    </message>
    <message>
        <source>OCR en tu Mac: las imágenes no salen del equipo y su texto se puede buscar.</source>
        <translation>OCR on your computer: images never leave it, and their text can be searched.</translation>
    </message>
    <message>
        <source>Guardar formato del texto (RTF y HTML)</source>
        <translation>Keep the formatting of text (RTF and HTML)</translation>
    </message>
    <message>
        <source>Conserva negritas, enlaces y estilos cifrados. Con ⌘↩ se pega siempre sin formato.</source>
        <translation>Keeps bold type, links and styles, encrypted. ⌘↩ always pastes without formatting.</translation>
    </message>
</context>
<context>
    <name>nimbrel::HotKeyRecorder</name>
    <message>
        <source>Pulsa el atajo…</source>
        <translation>Press the shortcut…</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Usa ⌘, ⌥ o ⌃</source>
        <translation>Use ⌘, ⌥ or ⌃</translation>
    </message>
    <message>
        <source>Ya está en uso</source>
        <translation>Already in use</translation>
    </message>
</context>
<context>
    <name>nimbrel::IgnoredAppsSettingsTab</name>
    <message>
        <source>Añadir aplicación…</source>
        <translation>Add application…</translation>
    </message>
    <message>
        <source>Quitar aplicación seleccionada</source>
        <translation>Remove selected application</translation>
    </message>
    <message>
        <source>Aplicaciones ignoradas</source>
        <translation>Ignored applications</translation>
    </message>
    <message>
        <source>Las aplicaciones añadidas a esta lista no registrarán nada de lo que copies dentro de ellas.</source>
        <translation>Nothing that you copy in the applications of this list is recorded.</translation>
    </message>
</context>
<context>
    <name>nimbrel::KindTabs</name>
    <message>
        <source>Tipo de elemento</source>
        <translation>Kind of item</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>All</translation>
    </message>
    <message>
        <source>Texto</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Imágenes</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>Archivos</source>
        <translation>Files</translation>
    </message>
    <message>
        <source>Fijados</source>
        <translation>Pinned</translation>
    </message>
</context>
<context>
    <name>nimbrel::Lock</name>
    <message>
        <source>ver la credencial guardada en Nimbrel</source>
        <translation>see the secret kept in Nimbrel</translation>
    </message>
    <message>
        <source>ver el historial del portapapeles</source>
        <translation>see the clipboard history</translation>
    </message>
</context>
<context>
    <name>nimbrel::PanelController</name>
    <message>
        <source>No se ha pegado</source>
        <translation>Nothing was pasted</translation>
    </message>
    <message>
        <source>La ventana de antes ya no tiene el teclado. El elemento está en el portapapeles.</source>
        <translation>The window from before no longer has the keyboard. The item is on the clipboard.</translation>
    </message>
</context>
<context>
    <name>nimbrel::PanelMenus</name>
    <message>
        <source>Borrar</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Pegar sin formato</source>
        <translation>Paste without formatting</translation>
    </message>
    <message>
        <source>Pegar texto de la imagen</source>
        <translation>Paste text of the image</translation>
    </message>
    <message>
        <source>Pegar transformado</source>
        <translation>Paste transformed</translation>
    </message>
    <message>
        <source>Abrir enlace</source>
        <translation>Open link</translation>
    </message>
    <message>
        <source>Mostrar en el Finder</source>
        <translation>Show in file manager</translation>
    </message>
    <message>
        <source>Desbloquear con Touch ID</source>
        <translation>Unlock with Touch ID</translation>
    </message>
    <message>
        <source>Mostrar el contenido</source>
        <translation>Show the content</translation>
    </message>
    <message>
        <source>Vista rápida</source>
        <translation>Quick look</translation>
    </message>
    <message>
        <source>Quitar de la cola</source>
        <translation>Remove from the queue</translation>
    </message>
    <message>
        <source>Añadir a la cola</source>
        <translation>Add to the queue</translation>
    </message>
    <message>
        <source>Nueva colección…</source>
        <translation>New collection…</translation>
    </message>
    <message>
        <source>Desfijar</source>
        <translation>Unpin</translation>
    </message>
    <message>
        <source>Fijar</source>
        <translation>Pin</translation>
    </message>
    <message>
        <source>Asignar a colección</source>
        <translation>Assign to collection</translation>
    </message>
    <message>
        <source>Sin colección</source>
        <translation>No collection</translation>
    </message>
    <message>
        <source>Todas las apps</source>
        <translation>All apps</translation>
    </message>
    <message>
        <source>Todas las colecciones</source>
        <translation>All collections</translation>
    </message>
    <message>
        <source>Restablecer filtros</source>
        <translation>Reset filters</translation>
    </message>
    <message>
        <source>Reanudar captura</source>
        <translation>Resume capture</translation>
    </message>
    <message>
        <source>Pausar captura</source>
        <translation>Pause capture</translation>
    </message>
    <message>
        <source>Borrar historial</source>
        <translation>Clear history</translation>
    </message>
    <message>
        <source>Ajustes</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Salir</source>
        <translation>Quit</translation>
    </message>
</context>
<context>
    <name>nimbrel::RowActions</name>
    <message>
        <source>Pegar</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>Borrar</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Desbloquear con Touch ID</source>
        <translation>Unlock with Touch ID</translation>
    </message>
    <message>
        <source>Mostrar el contenido</source>
        <translation>Show the content</translation>
    </message>
    <message>
        <source>Quitar de la cola</source>
        <translation>Remove from the queue</translation>
    </message>
    <message>
        <source>Añadir a la cola</source>
        <translation>Add to the queue</translation>
    </message>
    <message>
        <source>Desfijar</source>
        <translation>Unpin</translation>
    </message>
    <message>
        <source>Fijar</source>
        <translation>Pin</translation>
    </message>
</context>
<context>
    <name>nimbrel::SecuritySettingsTab</name>
    <message>
        <source>Protección de credenciales</source>
        <translation>Protection of credentials</translation>
    </message>
    <message>
        <source>Proteger datos sensibles con Touch ID</source>
        <translation>Protect sensitive data with Touch ID</translation>
    </message>
    <message>
        <source>Las contraseñas, tokens, claves de API y tarjetas detectadas en el historial quedarán ocultas hasta que te autentiques con Touch ID o la contraseña del Mac. El resto del historial permanece visible siempre.</source>
        <translation>Passwords, tokens, API keys and cards found in the history stay hidden until you authenticate with Touch ID or your login password. The rest of the history is always visible.</translation>
    </message>
    <message>
        <source>Autodestrucción programada</source>
        <translation>Scheduled self-destruction</translation>
    </message>
    <message>
        <source>Datos sensibles y credenciales</source>
        <translation>Sensitive data and credentials</translation>
    </message>
    <message>
        <source>Aplica a contraseñas, claves privadas, tokens de API y tarjetas de crédito.</source>
        <translation>Applies to passwords, private keys, API tokens and credit cards.</translation>
    </message>
    <message>
        <source>Códigos numéricos y 2FA</source>
        <translation>Numeric and 2FA codes</translation>
    </message>
    <message>
        <source>Aplica a códigos SMS de verificación de 6 a 8 dígitos.</source>
        <translation>Applies to SMS verification codes of 6 to 8 digits.</translation>
    </message>
    <message>
        <source>No guardar</source>
        <translation>Do not keep</translation>
    </message>
    <message>
        <source>Borrar a 1 minuto</source>
        <translation>Delete after 1 minute</translation>
    </message>
    <message>
        <source>Borrar a 5 minutos</source>
        <translation>Delete after 5 minutes</translation>
    </message>
    <message>
        <source>Borrar a 15 minutos</source>
        <translation>Delete after 15 minutes</translation>
    </message>
    <message>
        <source>Borrar a 1 hora</source>
        <translation>Delete after 1 hour</translation>
    </message>
    <message>
        <source>Conservar</source>
        <translation>Keep</translation>
    </message>
    <message numerus="yes">
        <source>Borrar a %n segundo(s)</source>
        <translation>
            <numerusform>Delete after %n second</numerusform>
            <numerusform>Delete after %n seconds</numerusform>
        </translation>
    </message>
    <message>
        <source>Cifrado en reposo activo</source>
        <translation>Encryption at rest is on</translation>
    </message>
    <message>
        <source>Cifrado desactivado</source>
        <translation>Encryption is off</translation>
    </message>
    <message>
        <source>Historial cifrado con AES-256-GCM y clave única en el Llavero (Secure Enclave).</source>
        <translation>The history is encrypted with AES-256-GCM and a unique key in the system’s keychain.</translation>
    </message>
    <message>
        <source>No se pudo acceder al Llavero del sistema. El historial se guardará sin cifrar.</source>
        <translation>The system’s keychain cannot be reached. The history will be stored without encryption.</translation>
    </message>
</context>
<context>
    <name>nimbrel::SettingsView</name>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Seguridad</source>
        <translation>Security</translation>
    </message>
    <message>
        <source>Apps ignoradas</source>
        <translation>Ignored apps</translation>
    </message>
    <message>
        <source>Apartados de los ajustes</source>
        <translation>Sections of the settings</translation>
    </message>
</context>
<context>
    <name>nimbrel::StatusBanners</name>
    <message>
        <source>Captura en pausa: lo que copies no se guarda.</source>
        <translation>Capture is paused: what you copy is not kept.</translation>
    </message>
    <message>
        <source>Reanudar</source>
        <translation>Resume</translation>
    </message>
    <message>
        <source>macOS bloquea el acceso al portapapeles. Permítelo en Privacidad y seguridad.</source>
        <translation>macOS blocks access to the clipboard. Allow it in Privacy &amp; Security.</translation>
    </message>
    <message>
        <source>Abrir</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>El Llavero no está disponible: el historial se guardará sin cifrar.</source>
        <translation>The key store is not available: the history will be kept unencrypted.</translation>
    </message>
    <message>
        <source>No se pudo leer la clave del Llavero: el historial se guarda SIN cifrar.</source>
        <translation>The key could not be read from the key store: the history is kept UNENCRYPTED.</translation>
    </message>
    <message>
        <source>Abrir Llaveros</source>
        <translation>Open key store</translation>
    </message>
    <message>
        <source>Para pegar automáticamente, concede el permiso de Accesibilidad.</source>
        <translation>To paste automatically, grant the Accessibility permission.</translation>
    </message>
    <message>
        <source>Conceder</source>
        <translation>Grant</translation>
    </message>
    <message>
        <source>No hay ningún programa con que abrirlo.</source>
        <translation>There is no program to open it with.</translation>
    </message>
    <message>
        <source>Este escritorio no permite que un programa pulse teclas: pega tú con Ctrl-V.</source>
        <translation>This desktop lets no program press keys: paste with Ctrl-V yourself.</translation>
    </message>
</context>
</TS>
