#!/usr/bin/env python3
"""The check of the translations finds what it is there for: check_translations_test.py LUPDATE"""
import pathlib
import sys
import tempfile
import unittest

from check_translations import check

LUPDATE = sys.argv.pop(1)
SOURCE = """struct Texts {{ Q_DECLARE_TR_FUNCTIONS(Panel) }};
QString text() {{ return {text}; }}
"""
CATALOGUE = """<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="es"><context><name>Panel</name>
<message><source>Hola %1</source><translation>{translation}</translation></message></context></TS>
"""


class CheckTranslations(unittest.TestCase):
    def problems(self, text='Texts::tr("Hola %1")', translation="Hello %1"):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for path, content in (("src/panel/a.cpp", SOURCE.format(text=text)),
                                  ("src/app/translations/a_en.ts", CATALOGUE.format(translation=translation))):
                (root / path).parent.mkdir(parents=True)
                (root / path).write_text(content, encoding="utf-8")
            return check(LUPDATE, root)

    def test_a_translated_text_is_fine(self):
        self.assertEqual(self.problems(), [])

    def test_a_text_without_translation_is_found(self):
        self.assertIn("'Adiós' is not translated", self.problems(text='Texts::tr("Adiós")')[0])

    def test_an_empty_translation_is_found(self):
        self.assertIn("is not translated", self.problems(translation="")[0])

    def test_a_lost_placeholder_is_found(self):
        self.assertIn("other placeholders", self.problems(translation="Hello")[0])

    def test_a_text_outside_of_the_localisation_is_found(self):
        self.assertIn("'Nada copiado' is not localised",
                      "\n".join(self.problems(text='QStringLiteral("Nada copiado")')))

    def test_every_way_of_making_a_text_is_looked_at(self):
        for text in ('QLatin1String("Nada copiado")', 'QString::fromUtf8("¡Olé!")', 'u"Nada copiado"_s',
                     'QStringLiteral(\n    "Nada copiado")', 'x.setText(QStringLiteral("Ajustes"));',
                     'x.setToolTip(\n  u"Cancelar"_s);'):
            self.assertIn("localised", "\n".join(self.problems(text=text)), text)

    def test_names_and_style_sheets_are_no_prose(self):
        self.assertEqual([line for line in self.problems(text='u"border: none; color: red"_s + u"searchField"_s')
                          if "localised" in line], [])


unittest.main()
