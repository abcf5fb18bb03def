"""What scripts/figures reads out of its programs' words, and that no trouble is left out."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "figures"
loader = importlib.machinery.SourceFileLoader("figures", str(SCRIPT))
figures = importlib.util.module_from_spec(importlib.util.spec_from_loader("figures", loader))
loader.exec_module(figures)

FAULTS = """\
faults injected, saving: 12 (host error 4, library exception 8)
faults injected, playing: 30 (host error 10, no memory 20)
[  PASSED  ] 2 tests.
faults injected, all: 42 (host error 14, library exception 8, no memory 20)
"""
FUZZ = """\
| target               | executions |   kept | corpus |  edges |     of | result |
|---|---:|---:|---:|---:|---:|---|
| voice-data           |      20021 |     21 |    150 |    700 |   4000 | ok |
| host-calls           |        700 |     41 |     90 |   2500 |   4000 | ok |
"""
SESSION = "8 threads, 30 s: 100 blocks, notes in 50, notes out {out}, gestures 7, " \
          "begun 7, performed 7, ended {ended}, rounds of the host 3\n"
CALLBACKS = "library threads: rounds 20, turns 900, edits sent 180, edits came {came}\n"
LONG = """\
session of 1 hours of host time
  host time 1.05 hours
  blocks 354375, notes in 1000, notes out 1000, wrong notes 0, automation 9
  user gestures 5, begun 6, performed 6, ended 6, out of order 0
  presets 1, views 1, states 1, failures 0
"""
LIVES = "  instances ended 500, at once 1, notes in 90, notes out 90, wrong notes 0, failures 0\n" \
        "  timers left 0\n"


class FiguresTest(unittest.TestCase):
    def setUp(self):
        self.table = figures.Table()

    def rows(self):
        return {name: ", ".join(row) for name, *row in self.table.rows}

    def judged(self, text, status=1):
        figures.judge(self.table, "here", text, status)
        return dict(self.table.trouble)

    def test_faults_are_added_up_by_kind_over_the_scenarios(self):
        figures.read_faults(self.table, "faults injected", FAULTS)
        self.assertEqual(self.rows(), {"faults injected": "42, 2 scenarios", "- host error": "14",
                                       "- library exception": "8", "- no memory": "20"})
        self.assertFalse(self.table.trouble)

    def test_faults_that_were_not_all_injected_are_missing(self):
        figures.read_faults(self.table, "faults injected", FAULTS[:60])
        self.assertEqual(self.table.trouble, {"figures missing": 1})

    def test_inputs_and_edges_are_read_for_each_target(self):
        figures.read_fuzz(self.table, FUZZ, ["host-calls", "voice-data"])
        self.assertEqual(self.rows()["inputs fuzzed, voice-data"], "20,021, 700 of 4000 edges")
        self.assertEqual(self.rows()["inputs fuzzed"], "20,721")
        self.assertFalse(self.table.trouble)

    def test_a_target_without_a_row_is_missing(self):
        figures.read_fuzz(self.table, FUZZ, ["host-calls", "processor-state"])
        self.assertEqual(self.table.trouble, {"figures missing": 1})

    def test_threads_are_multiplied_by_the_minutes_of_both_sessions(self):
        figures.read_threads(self.table, 2 * SESSION.format(out=50, ended=7), 2)
        self.assertEqual(self.rows()["threads × minutes"], "8 × 1 = 8")
        self.assertEqual(self.rows()["- notes in, notes out"], "100, 100")
        self.assertFalse(self.table.trouble)

    def test_what_the_threads_lost_is_counted(self):
        figures.read_threads(self.table, SESSION.format(out=47, ended=6), 1)
        self.assertEqual(self.table.trouble, {"lost events": 4})

    def test_rounds_and_edits_of_the_library_threads_are_added_up(self):
        figures.read_callbacks(self.table, 2 * CALLBACKS.format(came=180), 2)
        self.assertEqual(self.rows(), {"- rounds of a controller's life among library threads": "40",
                                       "- edits sent and come in them": "360, 360"})
        self.assertFalse(self.table.trouble)

    def test_edits_that_did_not_come_are_lost_and_a_test_without_figures_is_missing(self):
        figures.read_callbacks(self.table, CALLBACKS.format(came=178), 2)
        self.assertEqual(self.table.trouble, {"lost events": 2, "figures missing": 1})

    def test_a_session_that_did_not_end_is_missing(self):
        figures.read_threads(self.table, SESSION.format(out=50, ended=7), 2)
        self.assertEqual(self.table.trouble, {"figures missing": 1})

    def test_hours_are_those_that_were_played(self):
        figures.read_session(self.table, LONG)
        self.assertEqual(self.rows()["hours of host time"], "1.05")
        self.assertFalse(self.table.trouble)

    def test_notes_and_gestures_of_the_long_session_that_are_lost_are_counted(self):
        text = LONG.replace("notes out 1000", "notes out 990").replace("ended 6", "ended 5")
        figures.read_session(self.table, text.replace("wrong notes 0", "wrong notes 3"))
        self.assertEqual(self.table.trouble, {"lost events": 11, "wrong notes": 3})

    def test_lives_and_instances_are_those_that_ended(self):
        figures.read_lives(self.table, LIVES)
        figures.read_instances(self.table, LIVES.replace("at once 1", "at once 64"))
        self.assertEqual(self.rows()["create/destroy cycles"], "500")
        self.assertEqual(self.rows()["instances at once"], "64")

    def test_a_long_run_that_says_nothing_is_missing(self):
        for read in (figures.read_session, figures.read_lives, figures.read_instances):
            read(self.table, "")
        self.assertEqual(self.table.trouble, {"figures missing": 3})

    def test_a_long_run_that_was_cut_off_is_missing(self):
        for end in ("notes out", "wrong notes", "begun", "ended"):
            self.table = figures.Table()
            figures.read_session(self.table, LONG[:LONG.index(end)])
            self.assertEqual(self.table.trouble, {"figures missing": 1}, end)

    def test_a_run_without_trouble_has_none(self):
        self.assertEqual(self.judged("[  PASSED  ] 2 tests.\n" + LIVES, 0), {})

    def test_signals_sanitizer_errors_and_hangs_are_crashes(self):
        for text, status in (("", -11), ("", 139), ("", None),
                             ("ERROR: AddressSanitizer: heap-use-after-free", 1),
                             ("state.cpp:3: runtime error: signed integer overflow", 1),
                             ("ERROR: libFuzzer: timeout after 60 seconds", 70)):
            self.table = figures.Table()
            self.assertEqual(self.judged(text, status), {"crashes and hangs": 1}, text)

    def test_what_is_not_given_back_is_a_leak(self):
        for text in ("ERROR: LeakSanitizer: detected memory leaks",
                     "heap bytes grew from 100 to 2000", "handles grew from 6 to 7",
                     "  timers left 1\n"):
            self.table = figures.Table()
            self.assertEqual(self.judged(text), {"leaks": 1}, text)

    def test_checks_and_races_are_counted(self):
        self.assertEqual(self.judged("[  FAILED  ] 3 tests, listed below:"),
                         {"checks that failed": 3})
        self.table = figures.Table()
        self.assertEqual(self.judged("x.cpp:1: does not hold: a\nERROR: libFuzzer: deadly signal"),
                         {"checks that failed": 1})
        self.table = figures.Table()
        self.assertEqual(self.judged("failures 2"), {"checks that failed": 2})
        self.table = figures.Table()
        self.assertEqual(self.judged("WARNING: ThreadSanitizer: data race", 66), {"data races": 1})

    def test_a_failure_that_nothing_explains_counts_too(self):
        self.assertEqual(self.judged("endurance: there is no instrument"),
                         {"checks that failed": 1})

    def test_the_table_has_a_row_for_every_kind_of_trouble(self):
        self.table.blame("leaks", 2, "lives")
        out = io.StringIO()
        with contextlib.redirect_stdout(out):
            self.table.print()
        text = out.getvalue()
        self.assertRegex(text, r"\| leaks +\| 2 \|")
        self.assertRegex(text, r"\| crashes and hangs +\| 0 \|")
        self.assertIn("leaks: 2 (lives)", text)


if __name__ == "__main__":
    unittest.main()
