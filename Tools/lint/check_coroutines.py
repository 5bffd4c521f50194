#!/usr/bin/env python3
"""Finds the forms around co_await that GCC 12.2 compiles wrongly without a word.

In the full expression of a co_await, temporaries of aggregates and capturing lambdas are copied bit by bit into the
coroutine's frame, and so are the operands of `?:`. A co_await in a condition moves the frame's resume pointer. A lambda
coroutine with captures loses them as soon as the lambda itself is gone.
"""

import re

import house

BLOCK_WORDS = {"else", "do", "try", "const", "noexcept", "override", "final", "mutable"}
CONDITION_WORDS = {"if", "while", "switch", "for"}
OPENING = {")": "(", "]": "[", "}": "{"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
LITERAL_OR_COMMENT = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'',
    re.DOTALL)


def blanked(text):
    """The text with comments and literals overwritten, every position kept."""
    def blank(match):
        return re.sub(r"[^\n]", "_" if match[0][0] in "\"'R" else " ", match[0])
    return LITERAL_OR_COMMENT.sub(blank, text)


def word_before(code, position):
    """The word or the character in front of a position."""
    match = re.search(r"(\w+|\S)\s*$", code[max(0, position - 200):position])
    return match[1] if match else ""


def opens_block(code, position):
    """Whether the brace at this position opens a block and not an initialiser."""
    before = word_before(code, position)
    if before in BLOCK_WORDS or before in {")", "]", "{", "}", ";", ":", ""}:
        return True
    head = code[max(0, position - 300):position]
    return re.search(r"(\)\s*(const\s*)?(noexcept\s*)?->\s*[\w:<>,&*\s]+|\b(struct|class|namespace|enum)\b[^;{}()]*)$",
                     head) is not None


def matching_close(code, position):
    """The position of the bracket that closes the one at this position."""
    depth = 0
    for index in range(position, len(code)):
        if code[index] in CLOSING:
            depth += 1
        elif code[index] in OPENING:
            depth -= 1
            if depth == 0:
                return index
    return len(code) - 1


def matching_open(code, position):
    """The position of the bracket that opens the one at this position."""
    depth = 0
    for index in range(position, -1, -1):
        if code[index] in OPENING:
            depth += 1
        elif code[index] in CLOSING:
            depth -= 1
            if depth == 0:
                return index
    return 0


def expression_start(code, position):
    """Where the full expression around a position starts, and the words in front of the brackets that enclose it."""
    callers = []
    index = position - 1
    while index >= 0:
        character = code[index]
        if character == ";":
            break
        if character in OPENING:
            opened = matching_open(code, index)
            if character == "}" and opens_block(code, opened):
                break
            index = opened
        elif character == "{" and opens_block(code, index):
            break
        elif character in CLOSING:
            callers.append((character, word_before(code, index)))
            if character == "(" and callers[-1][1] in CONDITION_WORDS:
                break
        index -= 1
    return index + 1, callers


def expression_end(code, position):
    """Where the full expression around a position ends."""
    index = position
    while index < len(code) and code[index] not in ";":
        if code[index] == "{" and opens_block(code, index):
            index = matching_close(code, index)
        elif code[index] == "}":
            break
        index += 1
    return index


def without_blocks(expression):
    """The expression with the bodies of its lambdas emptied."""
    kept = []
    index = 0
    while index < len(expression):
        if expression[index] == "{" and opens_block(expression, index):
            index = matching_close(expression, index)
        else:
            kept.append(expression[index])
        index += 1
    return "".join(kept)


def captures(code):
    """The positions of all lambda introducers that capture."""
    for match in re.finditer(r"\[(?!\[)(?=[^\[\]]*[\w&=*][^\[\]]*\]\s*(\(|\{|mutable|<|->))", code):
        before = word_before(code, match.start())
        if before in {"return", "co_return"} or not re.match(r"[\w\])>]$|\w{2,}", before):
            yield match.start()


def findings_in(text):
    """Line and message of every hazard."""
    code = blanked(text)
    found = []

    for match in re.finditer(r"\bco_await\b", code):
        start, callers = expression_start(code, match.start())
        whole = code[start:expression_end(code, match.start())]
        expression = without_blocks(whole)
        line = house.line_of(code, match.start())
        words = [word for bracket, word in callers if bracket == "("]
        if CONDITION_WORDS & set(words):
            found.append((line, "co_await in a condition: bind its result first"))
            continue
        if any(re.fullmatch(r"[A-Z][A-Z0-9_]{3,}", word) for word in words):
            found.append((line, "co_await in a macro's argument: bind its result first"))
        if "?" in expression:
            found.append((line, "co_await and ?: in one expression: use if and else"))
        if re.search(r"\s(&&|\|\|)\s", expression):
            found.append((line, "co_await and a logical operator in one expression: bind its result first"))
        if next(captures(whole), None) is not None:
            found.append((line, "a lambda with captures in the expression of a co_await: name it first"))
        if "{" in expression:
            found.append((line, "a braced value in the expression of a co_await: name it or call its constructor"))

    for position in captures(code):
        opened = code.find("{", position)
        body = code[opened:matching_close(code, opened)] if opened >= 0 else ""
        if re.search(r"\bco_(await|return|yield)\b", body):
            found.append((house.line_of(code, position), "a coroutine lambda with captures: use a function"))

    return sorted(set(found))


def main():
    files = house.tracked_files("Sources/*.[ch]pp", "Tests/*.[ch]pp", "Examples/*.[ch]pp", "Benchmarks/*.[ch]pp",
                                "Fuzz/*.[ch]pp")
    house.report([(path.relative_to(house.ROOT), line, message)
                  for path in files for line, message in findings_in(path.read_text())])


if __name__ == "__main__":
    main()
