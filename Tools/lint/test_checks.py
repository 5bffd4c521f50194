"""Shows that each check fails on what it is there for, and lets the right form pass."""

import textwrap
import unittest

import check_comments
import check_coroutines
import check_house_rules
import check_includes
import check_readme
import check_umbrella_headers


class CoroutineCheck(unittest.TestCase):
    def messages(self, body):
        return [message for _, message in check_coroutines.findings_in("Async<void> f() {\n" + body + "\n}\n")]

    def assertFinds(self, part, body):
        self.assertIn(part, " ".join(self.messages(body)), body)

    def assertClean(self, body):
        self.assertEqual(self.messages(body), [], body)

    def test_finds_a_conditional_operator_beside_co_await(self):
        self.assertFinds("?:", "auto x = isA ? co_await a() : b();")

    def test_finds_a_conditional_operator_on_another_line_of_the_expression(self):
        self.assertFinds("?:", "auto x = combine(co_await a(),\n    isA ? b : c);")

    def test_finds_co_await_in_conditions(self):
        for body in ("if (co_await a()) { g(); }", "while (!co_await a()) {}", "if (auto x = co_await a(); x) {}",
                     "switch (co_await a()) {}", "for (auto x : co_await a()) {}", "if (g(1, co_await a())) {}"):
            self.assertFinds("condition", body)

    def test_finds_a_capturing_lambda_in_the_expression(self):
        for capture in ("[x]", "[=]", "[&]", "[this]", "[x = std::move(y)]"):
            self.assertFinds("a lambda with captures", f"co_await run({capture} {{ g(); }});")

    def test_finds_a_braced_value_in_the_expression(self):
        for body in ("co_await run(Options{1, 2});", "co_await run({1, 2});", "auto x = Pair{co_await a(), 1};",
                     "co_return co_await run(std::vector<int>{1});"):
            self.assertFinds("a braced value", body)

    def test_finds_logical_operators(self):
        self.assertFinds("logical", "const bool b = isA && co_await a();")

    def test_finds_co_await_in_a_macro(self):
        self.assertFinds("macro", "EXPECT_TRUE(co_await a());")

    def test_finds_a_coroutine_lambda_with_captures(self):
        self.assertFinds("coroutine lambda", "auto g = [x]() -> Async<void> { co_await a(x); };")

    def test_lets_bound_results_pass(self):
        self.assertClean("const bool b = co_await a();\nif (b) { g(Options{1}); }\nx = b ? 1 : 2;")

    def test_lets_calls_with_named_values_pass(self):
        self.assertClean("if (b) {\n    co_return co_await run(std::move(x), Options(1), y[2], z[i]);\n}\ng({1});")

    def test_lets_lambdas_without_captures_pass(self):
        self.assertClean("co_await run([](int a) { return a ? 1 : 2; });")

    def test_lets_blocks_in_every_position_pass(self):
        self.assertClean("try {\n    co_await a();\n} catch (...) {\n}\nfor (;;) {\n    co_await a();\n}\n"
                         "switch (x) {\ncase A: {\n    co_await a();\n}\n}\nelse {\n    co_await a();\n}")

    def test_reads_over_comments_and_literals(self):
        self.assertClean("// if (co_await a())\ng(\"co_await a() ? {\");\nconst char c = '?'; co_await a();")


class CommentCheck(unittest.TestCase):
    def test_finds_an_exported_class_without_a_comment(self):
        self.assertTrue(check_comments.findings_in("class TOVREL_EXPORT A {};\n"))

    def test_finds_an_exported_function_template_without_a_comment(self):
        self.assertTrue(check_comments.findings_in("int a;\ntemplate <class T>\nTOVREL_EXPORT int f();\n"))

    def test_lets_commented_names_pass(self):
        self.assertEqual(check_comments.findings_in("/// One.\ntemplate <class T>\nstruct TOVREL_EXPORT A {};\n"), [])

    def test_lets_details_pass(self):
        self.assertEqual(check_comments.findings_in(
            "namespace detail {\nTOVREL_EXPORT int f();\n} // namespace detail\n"), [])


class IncludeCheck(unittest.TestCase):
    def messages(self, **texts):
        names = {name.replace("__", "/") + ".hpp": text for name, text in texts.items()}
        return " ".join(message for _, _, message in check_includes.findings_in(names))

    def test_finds_an_include_upwards(self):
        self.assertIn("must not include", self.messages(Platform__Coding__A="#include <Platform/URLLoading/URL.hpp>"))

    def test_finds_a_third_partys_header(self):
        self.assertIn("third party", self.messages(Platform__Coding__A="#include <simdjson.h>\n#include <fmt/core.h>"))

    def test_finds_a_third_partys_header_behind_a_detail_header(self):
        self.assertIn("third party", self.messages(
            Platform__Coding__A="#include <Platform/Coding/Detail/B.hpp>",
            Platform__Coding__Detail__B="#include <boost/url.hpp>"))

    def test_finds_the_toolkit_outside_of_the_screens(self):
        self.assertIn("third party", self.messages(TovrelWebServices__SignIn__A="#include <QtGui/QColor>"))

    def test_lets_the_screens_use_the_toolkit(self):
        self.assertEqual(self.messages(TovrelWebServices__AccountScreens__A="#include <QtGui/QColor>"), "")

    def test_finds_a_quoted_include(self):
        self.assertIn("full name", self.messages(Platform__Coding__A='#include "B.hpp"'))

    def test_finds_a_folder_without_a_layer(self):
        self.assertIn("no place", self.messages(Platform__Elsewhere__A="#pragma once"))

    def test_lets_includes_downwards_pass(self):
        self.assertEqual(self.messages(Platform__URLLoading__A="#include <Platform/Coding/Data.hpp>\n#include <map>"), "")

    def test_lets_third_parties_be_used_in_private(self):
        self.assertEqual(self.messages(Platform__Coding__Private__A="#include <boost/url.hpp>"), "")


class HouseRuleCheck(unittest.TestCase):
    def messages(self, name, text):
        return " ".join(message for _, message in check_house_rules.findings_in(name, text))

    def test_finds_unfinished_work(self):
        self.assertIn("finish", self.messages("Sources/A.cpp", "// TO" "DO: later\n"))

    def test_finds_a_test_that_does_not_run(self):
        self.assertIn("does not run", self.messages("Tests/A.cpp", "TEST(A, DISABLED" "_B) {}\n"))

    def test_finds_a_second_way_to_start_a_coroutine(self):
        self.assertIn("Task alone", self.messages("Sources/Platform/A.cpp", "co_spawn (x, y, z);\n"))

    def test_finds_a_header_that_can_be_included_twice(self):
        self.assertIn("pragma", self.messages("Sources/A.hpp", "int a();\n"))

    def test_lets_clean_files_pass(self):
        self.assertEqual(self.messages("Sources/A.hpp", "#pragma once\n"), "")


class UmbrellaHeaderCheck(unittest.TestCase):
    def test_wants_every_public_header_of_the_library(self):
        names = ["Platform/System/Error.hpp", "Platform/Platform.hpp", "TovrelTesting/Fault.hpp"]
        self.assertEqual(check_umbrella_headers.wanted_includes("Platform", names), ["Platform/System/Error.hpp"])

    def test_keeps_the_screens_apart_from_the_library_around_them(self):
        names = ["TovrelWebServices/SignIn/A.hpp", "TovrelWebServices/AccountScreens/B.hpp",
                 "TovrelWebServices/AccountScreens/AccountScreens.hpp"]
        self.assertEqual(check_umbrella_headers.wanted_includes("TovrelWebServices", names), names[:1])
        self.assertEqual(check_umbrella_headers.wanted_includes("TovrelWebServices/AccountScreens", names), names[1:2])

    def test_completes_the_list_and_keeps_the_words_above_it(self):
        text = check_umbrella_headers.completed("#pragma once\n\n/// All.\n#include <A.hpp>\n", ["A.hpp", "B.hpp"])
        self.assertEqual(text, "#pragma once\n\n/// All.\n\n#include <A.hpp>\n#include <B.hpp>\n")


class ReadmeCheck(unittest.TestCase):
    PROGRAMS = ["// [readme]\nint main() {}\n// [readme]\n", "#include <a>\n// [readme]\nint f();\n// [readme]\n"]
    PAGE = "```cpp\nint main() {}\n```\nText.\n```cpp\nint f();\n```\n"

    def test_finds_a_snippet_that_differs_from_the_programs(self):
        found = check_readme.findings_in(self.PAGE + "```cpp\nint g();\n```\n", self.PROGRAMS)
        self.assertEqual([line for line, _ in found], [8])

    def test_finds_a_program_that_is_not_shown(self):
        self.assertTrue(check_readme.findings_in("```cpp\nint f();\n```\n", self.PROGRAMS))

    def test_finds_that_no_part_is_marked(self):
        self.assertTrue(check_readme.findings_in("No code.\n", ["int main() {}\n"]))

    def test_lets_equal_snippets_pass(self):
        self.assertEqual(check_readme.findings_in(self.PAGE, self.PROGRAMS), [])


if __name__ == "__main__":
    unittest.main()
