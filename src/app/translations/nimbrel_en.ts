<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="es">
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
        <source>Uso: nimbrel [OPCIÓN]
     nimbrel nimbrel://add?text=TEXTO[&amp;source=iphone|ipad|mac]…
     nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [ARCHIVO]
     nimbrel transform TRANSFORMACIÓN [ARCHIVO]

Nimbrel guarda lo que copias, cifrado, y lo pega donde estés: ⇧⌘V, u otro atajo de
los ajustes, abre el panel (la tecla ⌘ es Súper). Si ya está en marcha, otro
arranque muestra su panel.

Una dirección nimbrel://add añade al historial un texto de otro dispositivo.

  -h, --help     muestra esta ayuda y termina
  -v, --version  muestra la versión y termina

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
</source>
        <translation>Usage: nimbrel [OPTION]
       nimbrel nimbrel://add?text=TEXT[&amp;source=iphone|ipad|mac]…
       nimbrel classify [--source ID] [--no-codes] [--multiline] [--lines] [FILE]
       nimbrel transform TRANSFORMATION [FILE]

Nimbrel keeps what you copy, encrypted, and pastes it wherever you are: ⇧⌘V, or
another shortcut of the settings, opens the panel (the key ⌘ is Super). When it runs
already, another start shows its panel.

A nimbrel://add address adds a text of another device to the history.

  -h, --help     shows this help and ends
  -v, --version  shows the version and ends

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
</translation>
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
