<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="es">
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
