#!/usr/bin/env python3
"""What is installed: complete, valid, and started by the bus from where it is. install_test.py CMAKE BUILD"""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

CMAKE, BUILD = sys.argv[1:3]
EXPECTED = """
bin/nimbrel
libexec/nimbrel/nimbrel-imaging
share/applications/app.nimbrel.Nimbrel.desktop
share/bash-completion/completions/nimbrel
share/dbus-1/interfaces/app.nimbrel.Nimbrel.xml
share/dbus-1/services/app.nimbrel.Nimbrel.service
share/fish/vendor_completions.d/nimbrel.fish
share/gnome-shell/search-providers/app.nimbrel.Nimbrel.search-provider.ini
share/icons/hicolor/scalable/apps/app.nimbrel.Nimbrel.svg
share/icons/hicolor/symbolic/apps/app.nimbrel.Nimbrel-symbolic.svg
share/man/es/man1/nimbrel.1.gz
share/man/man1/nimbrel.1.gz
share/metainfo/app.nimbrel.Nimbrel.metainfo.xml
share/polkit-1/actions/app.nimbrel.Nimbrel.policy
share/zsh/site-functions/_nimbrel
""".split() + [f"share/icons/hicolor/{side}x{side}/apps/app.nimbrel.Nimbrel.png"
               for side in (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)]


def run(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=60, **options).stdout


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.prefix = pathlib.Path(cls.folder.name) / "con espacio"
        run(CMAKE, "--install", BUILD, "--prefix", str(cls.prefix))
        share = cls.prefix / "share"
        cls.environment = dict(os.environ, PATH=f"{cls.prefix / 'bin'}:{os.environ['PATH']}",
                               XDG_DATA_DIRS=f"{share}:/usr/local/share:/usr/share", LANG="C.UTF-8", LANGUAGE="es")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def shell(self, script):
        """Runs a script on a session bus of its own that knows the installation, with a key store."""
        store = "printf nimbrel | gnome-keyring-daemon --unlock --components=secrets --daemonize >/dev/null 2>&1; "
        return run("dbus-run-session", "--", "bash", "-euc", store + script, env=self.environment)

    def test_everything_is_there_and_nothing_is_executable_that_need_not(self):
        found = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*") if path.is_file()}
        self.assertEqual([name for name in EXPECTED if name not in found], [])
        executable = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*")
                      if path.is_file() and path.stat().st_mode & 0o111}
        self.assertEqual(executable, {"bin/nimbrel", "libexec/nimbrel/nimbrel-imaging"})

    def test_the_descriptions_are_valid(self):
        share = self.prefix / "share"
        run("desktop-file-validate", str(share / "applications/app.nimbrel.Nimbrel.desktop"))
        run("appstreamcli", "validate", "--no-net", str(share / "metainfo/app.nimbrel.Nimbrel.metainfo.xml"))
        run("bash", "-n", str(share / "bash-completion/completions/nimbrel"))
        for side in (16, 48, 512):
            picture = share / f"icons/hicolor/{side}x{side}/apps/app.nimbrel.Nimbrel.png"
            self.assertEqual(run("identify", "-format", "%w %h", str(picture)), f"{side} {side}")

    def test_the_menu_offers_the_shortcuts_in_their_order(self):
        entry = (self.prefix / "share/applications/app.nimbrel.Nimbrel.desktop").read_text()
        actions = entry.split("[Desktop Action ")[1:]
        self.assertEqual([line.removeprefix("Name[es]=") for action in actions for line in action.splitlines()
                          if line.startswith("Name[es]=")],
                         ["Copiar último", "Buscar historial", "Pausar captura", "Pegar colección"])
        for action in actions:
            icon = next(line for line in action.splitlines() if line.startswith("Icon=")).removeprefix("Icon=")
            self.assertTrue((self.prefix / f"share/icons/hicolor/scalable/actions/{icon}.svg").exists(), icon)

    def test_the_service_names_the_installed_program(self):
        service = (self.prefix / "share/dbus-1/services/app.nimbrel.Nimbrel.service").read_text()
        self.assertIn(f"Exec=\"{self.prefix}/bin/nimbrel\"\n", service)

    def test_a_command_starts_the_program_and_another_ends_it(self):
        self.assertEqual(self.shell("nimbrel toggle-capture; nimbrel toggle-capture; nimbrel quit; nimbrel quit"),
                         "Captura pausada.\nCaptura reanudada.\n")

    def test_the_service_is_as_it_is_described(self):
        described = self.shell("gdbus introspect --session --xml --dest app.nimbrel.Nimbrel "
                               "--object-path /app/nimbrel/Nimbrel; nimbrel quit")
        shipped = (self.prefix / "share/dbus-1/interfaces/app.nimbrel.Nimbrel.xml").read_text()
        for line in shipped[shipped.index("<interface"):shipped.index("</node>")].splitlines():
            if "<!--" not in line:
                self.assertIn(" ".join(line.split()), " ".join(described.split()))

    def test_the_completion_knows_the_commands(self):
        completion = self.prefix / "share/bash-completion/completions/nimbrel"
        words = run("bash", "-c", f"source '{completion}'; COMP_WORDS=(nimbrel c); COMP_CWORD=1; _nimbrel; "
                                  "printf '%s\\n' \"${COMPREPLY[@]}\"")
        self.assertEqual(words.split(), ["copy-latest", "collections", "classify"])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
