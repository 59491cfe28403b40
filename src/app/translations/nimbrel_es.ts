<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="es">
<context>
    <name>CommandLine</name>
    <message numerus="yes">
        <source>%n elemento(s) exportado(s).</source>
        <translation>
            <numerusform>%n elemento exportado.</numerusform>
            <numerusform>%n elementos exportados.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n secreto(s) quedan fuera; --secrets los incluye.</source>
        <translation>
            <numerusform>%n secreto queda fuera; --secrets lo incluye.</numerusform>
            <numerusform>%n secretos quedan fuera; --secrets los incluye.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) no se pudieron leer.</source>
        <translation>
            <numerusform>%n elemento no se pudo leer.</numerusform>
            <numerusform>%n elementos no se pudieron leer.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) añadido(s).</source>
        <translation>
            <numerusform>%n elemento añadido.</numerusform>
            <numerusform>%n elementos añadidos.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) ya estaban.</source>
        <translation>
            <numerusform>%n elemento ya estaba.</numerusform>
            <numerusform>%n elementos ya estaban.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) han caducado o no se guardan según los ajustes.</source>
        <translation>
            <numerusform>%n elemento ha caducado o no se guarda según los ajustes.</numerusform>
            <numerusform>%n elementos han caducado o no se guardan según los ajustes.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) no se pudieron importar.</source>
        <translation>
            <numerusform>%n elemento no se pudo importar.</numerusform>
            <numerusform>%n elementos no se pudieron importar.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n elemento(s) salvado(s).</source>
        <translation>
            <numerusform>%n elemento salvado.</numerusform>
            <numerusform>%n elementos salvados.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Doctor</name>
    <message numerus="yes">
        <source>%n elemento(s)</source>
        <translation>
            <numerusform>%n elemento</numerusform>
            <numerusform>%n elementos</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>nimbrel::ContentView</name>
    <message numerus="yes">
        <source>Se borrarán %n elemento(s). Los fijados se conservan. No se puede deshacer.</source>
        <translation>
            <numerusform>Se borrará %n elemento. Los fijados se conservan. No se puede deshacer.</numerusform>
            <numerusform>Se borrarán %n elementos. Los fijados se conservan. No se puede deshacer.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>nimbrel::GeneralSettingsTab</name>
    <message numerus="yes">
        <source>%n elemento(s)</source>
        <translation>
            <numerusform>%n elemento</numerusform>
            <numerusform>%n elementos</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>nimbrel::SecuritySettingsTab</name>
    <message numerus="yes">
        <source>Borrar a %n segundo(s)</source>
        <translation>
            <numerusform>Borrar a %n segundo</numerusform>
            <numerusform>Borrar a %n segundos</numerusform>
        </translation>
    </message>
</context>
</TS>
