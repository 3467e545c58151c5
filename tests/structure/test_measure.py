# SPDX-FileCopyrightText: 2026 The VELM authors
# SPDX-License-Identifier: MIT
"""What measure.py counts, on made-up sources whose figures can be counted by hand."""

import os
import tempfile
import unittest
import unittest.mock
from pathlib import Path

import cpp_shape
import measure


def functions(text):
    """(owner, name, lines, nesting) of each function of the text."""
    return [(f.owner, f.name, f.lines, f.nesting) for f in cpp_shape.read(text).functions]


class Functions(unittest.TestCase):
    def test_one_line(self):
        self.assertEqual(functions("int a() { return 1; }\n"), [("", "a", 1, 0)])

    def test_lines_from_the_first_word_to_the_brace(self):
        text = "/// Told.\nstatic int\na(int b,\n  int c) {\n  return b;\n}\n"
        self.assertEqual(functions(text), [("", "a", 5, 0)])

    def test_namespaces_and_owners(self):
        text = "namespace n {\nnamespace {\nvoid a() {\n}\n}\nvoid B::c() const {\n}\n}\n"
        self.assertEqual(functions(text), [("", "a", 2, 0), ("B", "c", 2, 0)])

    def test_members_in_the_class(self):
        text = "class A : public B {\npublic:\n  int b() const { return c; }\n  int c = 1;\n};\n"
        self.assertEqual(functions(text), [("A", "b", 1, 0)])

    def test_constructor_with_braces_before_its_body(self):
        text = "A::A(int b)\n    : B(b), c{1}, d{f(2)} {\n  if (b)\n    go();\n}\n"
        self.assertEqual(functions(text), [("A", "A", 5, 1)])

    def test_constructor_with_braces_in_parentheses(self):
        text = (
            "A::A(int b)\n    : c({b, [this] { return d(); },\n         {}}),\n"
            "      e(new E(f())) {\n}\n"
        )
        self.assertEqual(functions(text), [("A", "A", 5, 0)])

    def test_braces_as_a_default(self):
        text = "void a(int b = {});\nvoid c(B d = {}, E e = E{1}) {\n}\n"
        self.assertEqual(functions(text), [("", "c", 2, 0)])

    def test_operators(self):
        text = "bool A::operator==(A b) {\n}\nint operator()(int b) {\n}\n"
        self.assertEqual(
            functions(text), [("A", "operator==", 2, 0), ("", "operator()", 2, 0)]
        )

    def test_what_is_no_function(self):
        text = (
            "const int a[] = {f(1), 2};\nint b{f(1)};\nenum class C { d, e };\nvoid g();\n"
            "#define H() { \\\n}\nstd::function<void(int)> i{j};\n// void k() {\n/* } */\n"
        )
        self.assertEqual(functions(text), [])

    def test_braces_in_literals(self):
        text = "void a() {\n  f('{', \"}\\\"{\", R\"({)\", 1'000);\n}\nvoid b() {}\n"
        self.assertEqual(functions(text), [("", "a", 3, 0), ("", "b", 1, 0)])


class Nesting(unittest.TestCase):
    def depth(self, body):
        return functions("void a() {\n" + body + "\n}\n")[0][3]

    def test_without_braces(self):
        self.assertEqual(self.depth("for (;;) while (b) if (c) d();"), 3)

    def test_with_braces(self):
        self.assertEqual(self.depth("for (auto b : c) { e(); if (d) { f(); } } g();"), 2)

    def test_else_if_is_beside_its_if(self):
        self.assertEqual(self.depth("if (b) c(); else if (d) e(); else f();"), 1)

    def test_in_an_else(self):
        self.assertEqual(self.depth("if (b) c(); else { if (d) e(); }"), 2)

    def test_switch(self):
        self.assertEqual(self.depth("switch (b) { case C::d: if (e) f(); default: g(); }"), 2)

    def test_do(self):
        self.assertEqual(self.depth("do { if (b) c(); } while (d); e();"), 2)

    def test_lambda(self):
        self.assertEqual(self.depth("if (b) c(d, [this] { for (;;) { e(); } });"), 2)

    def test_plain_blocks_and_lists(self):
        self.assertEqual(self.depth("{ b = {1, {2, 3}}; }"), 0)


class Classes(unittest.TestCase):
    TEXT = """
/// Told.
class A {
    Q_OBJECT

public:
    A();
    ~A();
    /// Told.
    int told() const;
    int untold(std::function<void(int)> a = {});
    void seen() override;
    A &operator=(const A &) = delete;
    std::function<int(int)> data;

signals:
    /// Told.
    void changed();

private slots:
    void inside();

private:
    int (*pointer)(int);
    int size = count(1);
};

struct B {
    int open();
};
"""

    def test_documented(self):
        found = cpp_shape.read(self.TEXT).classes
        self.assertEqual([(c.name, c.documented) for c in found], [("A", True), ("B", False)])

    def test_promised_methods(self):
        found = cpp_shape.read(self.TEXT).classes
        promised = [(m.name, m.documented) for c in found for m in c.methods if m.promised]
        self.assertEqual(
            promised, [("told", True), ("untold", False), ("changed", True), ("open", False)]
        )

    def test_all_methods(self):
        found = cpp_shape.read(self.TEXT).classes[0]
        names = "A A told untold seen operator= changed inside".split()
        self.assertEqual([method.name for method in found.methods], names)


class Figures(unittest.TestCase):
    def test_spread(self):
        self.assertEqual(measure.Spread.of(range(1, 21)), measure.Spread(10, 19, 20))
        self.assertEqual(measure.Spread.of([7]), measure.Spread(7, 7, 7))
        self.assertEqual(measure.Spread.of([]), measure.Spread(0, 0, 0))

    def test_commits(self):
        log = (
            "\x1e\x1f\n\n3\t1\ta\n"
            "\x1eWhy.\n\x1f\n\n10\t0\ta\n-\t-\tpicture\n2\t3\tb\n"
            "\x1eWhy.\n\x1f\n\n40\t0\ta\n"
            "\x1e\x1f\n\n1\t0\ta\n"
        )
        self.assertEqual(measure.commit_habit(log), (50, round((4 + 15) / 2)))
        self.assertEqual(measure.commit_habit(""), (0, 0))

    def test_table(self):
        with tempfile.TemporaryDirectory() as folder:
            top = Path(folder)
            for path, text in {
                "src/A.h": "/// Told.\nclass A {\npublic:\n    int b();\n    int c();\n};\n",
                "src/A.cpp": "int A::b() {\n    return 1;\n}\n",
                "src/More.cpp": "int A::c() {\n    if (d)\n        return 1;\n    return 2;\n}\n",
                "src/other.cpp": "int e() {\n    return 1;\n}\n",
                "tests/a.cpp": "\n" * 34,
            }.items():
                (top / path).parent.mkdir(exist_ok=True)
                (top / path).write_text(text, encoding="utf-8")
            figures = dict(measure.table(top, "src"))
        self.assertEqual(figures["function lines, median / 95 % / longest"], "3 / 5 / 5")
        self.assertEqual(figures["file lines, median / 95 % / longest"], "4 / 6 / 6")
        self.assertEqual(figures["nesting, 95 % / deepest"], "1 / 1")
        self.assertEqual(figures["classes / public methods documented"], "100 / 0 %")
        self.assertEqual(figures["test lines to source lines"], "2.00")
        self.assertEqual(
            figures["biggest class: lines in all its files"], "14, 2 methods, 3 files (A)"
        )

    def test_no_git(self):
        with tempfile.TemporaryDirectory() as folder, unittest.mock.patch.dict(
            os.environ, {"PATH": folder}
        ):
            self.assertEqual(measure.git_log(Path(folder)), "")


if __name__ == "__main__":
    unittest.main()
