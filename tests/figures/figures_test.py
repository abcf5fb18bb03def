"""Tests how scripts/figures reads exit statuses and JUnit reports."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "figures"
loader = importlib.machinery.SourceFileLoader("figures", str(SCRIPT))
figures = importlib.util.module_from_spec(importlib.util.spec_from_loader("figures", loader))
loader.exec_module(figures)

REPORT = """<testsuites><testsuite name="Faults">
<testcase name="Ports"><properties><property name="ports: no memory" value="20"/>
<property name="ports, plain host: no memory" value="3"/></properties></testcase>
<testcase name="State"><properties><property name="state: library exception" value="8"/>
</properties></testcase></testsuite></testsuites>"""


class FiguresTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(setattr, figures, "LOGS", figures.LOGS)
        figures.LOGS = pathlib.Path(folder.name)
        self.table = figures.Table()

    def google_test(self, report, status):
        """The table after a program that wrote this report (None: no file) and ended with this status."""
        program = ("import sys; file = sys.argv[1].split('xml:')[1]\n"
                   f"if {report!r}: open(file, 'w').write({report!r})\nsys.exit({status})")
        with contextlib.redirect_stderr(io.StringIO()):
            figures.google_test(self.table, "faults injected", "tsan",
                                [sys.executable, "-c", program], 60)
        return dict(self.table.rows)

    def test_google_test_adds_figures_up_by_what_follows_the_last_colon(self):
        self.assertEqual(self.google_test(REPORT, 0), {
            "faults injected": "ok", "- no memory": "23", "- library exception": "8"})
        self.assertFalse(self.table.failed)

    def test_google_test_fails_with_another_status_or_without_figures(self):
        for report, status in ((REPORT, 1), (None, 0), ("<testsuites/>", 0), (None, -6)):
            self.table = figures.Table()
            self.assertIn("FAILED", self.google_test(report, status)["faults injected"])
            self.assertTrue(self.table.failed)

    def test_run_says_how_a_program_ended(self):
        with contextlib.redirect_stderr(io.StringIO()):
            self.assertEqual(figures.run("good", ["true"]), "")
            self.assertIn("status 1", figures.run("bad", ["false"]))
            self.assertIn("stopped after 1 s", figures.run("endless", ["sleep", "60"], 1))

    def test_print_shows_each_row(self):
        self.table.add("lives", "status 1")
        self.table.add("fuzz", "")
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            self.table.print()
        self.assertIn("| lives | FAILED: status 1 |", out.getvalue())
        self.assertIn("| fuzz  | ok |", out.getvalue())


if __name__ == "__main__":
    unittest.main()
