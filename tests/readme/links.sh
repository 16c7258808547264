#!/usr/bin/env bash
# The links and paths in the documents name existing files and folders, and README.md names every page of
# docs/. Every shader of examples/ itself is in the table of its folder and has a picture, the pictures are
# small enough, and the page of the gallery is up to date.
# usage: links.sh
set -euo pipefail
cd "$(dirname "$0")/../.."
failures=0
fail() {
    echo "$1"
    failures=$((failures + 1))
}

pages=(README.md CONTRIBUTING.md docs/*.md {editors,examples,examples/renderer,tests/*}/README.md)
for page in "${pages[@]}"; do
    folder=$(dirname "$page")
    for target in $(grep -oE '\]\([^)#: ]+' "$page" | sed 's/^](//'); do
        [ -e "$folder/$target" ] || fail "$page: no such file: $target"
    done
    for path in $(grep -oE '`(src|runtime|tests|tools|docs|scripts|bench|examples)/[A-Za-z0-9_./*-]+' "$page" |
        tr -d '`'); do
        compgen -G "$path" >/dev/null || fail "$page: no such path: $path"
    done
done
for page in docs/*.md; do
    grep -qF "$page" README.md || fail "README.md does not lead to $page"
done
for source in examples/*.sl; do
    name=$(basename "$source" .sl)
    grep -q "^|.*\`$name\`" examples/README.md || fail "examples/README.md: no place for $name"
    [ -s "docs/images/$name.png" ] || fail "docs/images: no picture of $name"
done
[ "$(cat docs/images/*.png | wc -c)" -lt 1500000 ] || fail "docs/images: more than 1.5 MB"
scripts/gallery.sh --page | diff -u docs/gallery.md - || fail "docs/gallery.md: scripts/gallery.sh rewrites it"
[ "$failures" = 0 ]
