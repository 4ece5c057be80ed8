# Sourced by the tests of the packages: counts checks, and says what failed.
passed=0
failed=0

# check WHAT COMMAND...: one check; its output is shown when the command fails.
check() {
    local what=$1 out
    shift
    if out=$("$@" 2>&1); then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        printf 'failed: %s\n' "$what"
        [ -z "$out" ] || printf '%s\n' "$out" | sed 's/^/    /'
    fi
}

# same WHAT EXPECTED FOUND: two texts.
same() { check "$1" diff -u --label expected --label found <(printf '%s\n' "$2") <(printf '%s\n' "$3"); }

# contains TEXT LINE: a text has the line; lacks: no line of it has the part.
contains() { grep -Fxq -- "$2" <<<"$1" || { printf 'no line: %s\n%s\n' "$2" "$1"; return 1; }; }
lacks() { ! grep -F -- "$2" <<<"$1"; }

# finish NAME: the last line, and the verdict.
finish() {
    echo "$1: $passed passed, $failed failed"
    [ $failed = 0 ] && [ $passed != 0 ]
}
