"""What scripts/growth makes of the program's lines: exponents, tables, the picture, the page."""
import contextlib
import importlib.machinery
import importlib.util
import io
import pathlib
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "growth"
loader = importlib.machinery.SourceFileLoader("growth", str(SCRIPT))
growth = importlib.util.module_from_spec(importlib.util.spec_from_loader("growth", loader))
loader.exec_module(growth)

LINES = """\
instances\tmemory\tinstances\tbytes\t1\t2048
instances\tmemory\tinstances\tbytes\t4\t8192
instances\tlife\tinstances\tseconds\t1\t0.0005
instances\tlife\tinstances\tseconds\t4\t0.002
ports\tlisted\tports\tseconds\t10\t1e-06
ports\tlisted\tports\tseconds\t1000\t0.01
"""
LIMITS = """\
samples\tseconds\tjitter\tautomation values a second\tsafe rate\tof 1000 events a second
64\t0.00133333\t0.00131\t750\t75000\t1
8192\t0.17067\t0.17065\t5.859\t585\t0.414
"""


class Exponent(unittest.TestCase):
    def test_is_that_of_a_power_of_the_size(self):
        for power in (0, 0.5, 1, 2):
            points = [(size, 3e-7 * size ** power) for size in (1, 10, 50, 1000)]
            self.assertAlmostEqual(growth.exponent(points), power)

    def test_that_is_nearly_none_is_shown_without_a_sign(self):
        self.assertEqual(growth.shown(-0.001), "0.00")
        self.assertEqual(growth.shown(-0.012), "-0.01")

    def test_is_the_best_fit_where_costs_are_no_power(self):
        # Twice the size costs 4 times as much, then as much again: halfway between 2 and 0.
        self.assertAlmostEqual(growth.exponent([(1, 1), (2, 4), (4, 4)]), 1)


class Series(unittest.TestCase):
    def test_keep_their_order_and_their_points(self):
        series = growth.read_series(LINES)
        self.assertEqual([(one.subject, one.name, one.unit) for one in series],
                         [("instances", "memory", "bytes"), ("instances", "life", "seconds"),
                          ("ports", "listed", "seconds")])
        self.assertEqual(series[1].points, [(1, 0.0005), (4, 0.002)])


class Tables(unittest.TestCase):
    def test_show_costs_and_exponents(self):
        lines = growth.growth_table(growth.read_series(LINES)).splitlines()
        self.assertEqual(lines[2:], [
            "| instances: memory | 1 to 4 instances | 2.00 KiB | 8.00 KiB | 2.00 KiB | 1.00 |",
            "| instances: life | 1 to 4 instances | 500 us | 2.00 ms | 500 us | 1.00 |",
            "| ports: listed | 10 to 1,000 ports | 1.00 us | 10.0 ms | 10.0 us | 2.00 |"])
        self.assertEqual({line.count("|") for line in lines}, {7})

    def test_show_what_users_meet(self):
        lines = growth.limits_table(LIMITS).splitlines()
        self.assertIn("of 1,000 events a second arrive", lines[0])
        self.assertEqual(lines[2:], ["| 64 | 1.3 ms | 1.3 ms | 750 | 75,000 a second | 100 % |",
                                     "| 8,192 | 170.7 ms | 170.7 ms | 6 | 585 a second | 41 % |"])


class Picture(unittest.TestCase):
    def test_has_a_panel_for_each_subject_and_unit_with_every_point(self):
        script = growth.picture_script(growth.read_series(LINES), pathlib.Path("some.svg"))
        self.assertEqual(script.count("\nplot "), 3)
        self.assertIn('set output "some.svg"', script)
        for line in LINES.splitlines():
            size, cost = line.split("\t")[-2:]
            self.assertIn(f"\n{size} {float(cost):.9g}\n", script)
        self.assertIn('title "listed (2.00)"', script)
        self.assertIn('set title "instances, resident, by instances"', script)
        self.assertIn('set title "ports"', script)


class Page(unittest.TestCase):
    def test_changes_between_its_two_lines_alone(self):
        page = f"before\n{growth.FIRST_LINE}\n\nold\n\n{growth.LAST_LINE}\nafter\n"
        self.assertEqual(growth.with_section(page, "new"),
                         f"before\n{growth.FIRST_LINE}\n\nnew\n\n{growth.LAST_LINE}\nafter\n")
        once = growth.with_section(page, "new")
        self.assertEqual(growth.with_section(once, "new"), once)

    def test_without_its_lines_is_left_as_it_is(self):
        for page in ("nothing", growth.FIRST_LINE + "\n", growth.LAST_LINE + "\n"):
            with self.assertRaises(SystemExit), contextlib.redirect_stderr(io.StringIO()):
                growth.with_section(page, "new")

    def test_in_the_docs_has_its_lines(self):
        growth.with_section(growth.PAGE.read_text(), "new")


if __name__ == "__main__":
    unittest.main()
