#!/usr/bin/env bash
# Fills a folder with sequences of messages of an editor, which opens a shader, sends different requests
# for one of its places, edits it and sends more requests.
# usage: messages_corpus.sh FOLDER
set -euo pipefail
top=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$1"
folder=$(cd "$1" && pwd)
cd "$top"
rm -f "$folder"/*

# Prints a file as a JSON string without its quotes.
escaped() {
    awk '{ gsub(/\\/, "\\\\"); gsub(/"/, "\\\""); gsub(/\t/, "\\t"); printf "%s\\n", $0 }' "$1"
}

methods=(hover completion signatureHelp definition references documentHighlight prepareRename
    rename documentSymbol semanticTokens/full inlayHint documentColor colorPresentation codeAction
    codeLens formatting rangeFormatting foldingRange selectionRange)
pieces=('x' '(' '}' ';' '\"' ' float y = s; ' 'noise(P)' '#define A B\n' '#include \"b.h\"\n' '/*'
    'color \"hsv\" (1, 1, 1)' '\n')

# usage: request ID METHOD LINE CHARACTER
request() {
    local place="{\"line\": $3, \"character\": $4}"
    printf '{"id": %d, "method": "textDocument/%s", "params": {"textDocument": {"uri": "%s"}, ' \
        "$1" "$2" "$uri"
    printf '"position": %s, "positions": [%s], "range": {"start": %s, "end": {"line": %d, "character": 0}}, ' \
        "$place" "$place" "$place" $(($3 + 2))
    printf '"newName": "renamed", "color": {"red": 0, "green": 1, "blue": 0.5}, '
    printf '"context": {"diagnostics": [], "includeDeclaration": true}}}\n'
}

number=0
for source in examples/*.sl tests/golden/*.sl tests/semantics/ordinary/*.sl; do
    [ "$(wc -c <"$source")" -lt 2500 ] || continue
    uri=file:///nowhere/a.sl
    lines=$(wc -l <"$source")
    line=$((number * 7 % (lines + 1)))
    character=$((number * 5 % 24))
    {
        if [ $((number % 3)) = 0 ]; then
            printf '{"method": "textDocument/didOpen", "params": {"textDocument": {"uri": "file:///nowhere/b.h", "version": 1, "text": "#define GAIN(x) (2 * (x))\\nfloat gain() { return 0.5; }\\n"}}}\n'
        fi
        printf '{"method": "textDocument/didOpen", "params": {"textDocument": {"uri": "%s", "languageId": "sl", "version": 1, "text": "%s"}}}\n' \
            "$uri" "$(escaped "$source")"
        for step in 1 2 3; do
            request $((step * 2)) "${methods[(number + step * 4) % ${#methods[@]}]}" "$line" "$character"
            printf '{"method": "textDocument/didChange", "params": {"textDocument": {"uri": "%s", "version": %d}, "contentChanges": [{"range": {"start": {"line": %d, "character": %d}, "end": {"line": %d, "character": %d}}, "text": "%s"}]}}\n' \
                "$uri" $((step + 1)) "$line" "$character" "$line" $((character + step)) \
                "${pieces[(number + step) % ${#pieces[@]}]}"
            request $((step * 2 + 1)) "${methods[(number * 5 + step) % ${#methods[@]}]}" "$line" "$character"
        done
        case $((number % 8)) in
        0) printf '{"method": "workspace/didChangeConfiguration", "params": {"settings": {"shaderqx": {"warningLevel": 1, "macros": ["GAIN=2"], "includeFolders": ["include"]}}}}\n' ;;
        1) printf '{"id": 20, "method": "workspace/symbol", "params": {"query": "a"}}\n' ;;
        2) printf '{"id": 21, "method": "completionItem/resolve", "params": {"label": "mix", "kind": 3}}\n' ;;
        3) printf '{"method": "workspace/didChangeWatchedFiles", "params": {"changes": [{"uri": "file:///nowhere/b.h", "type": 1}]}}\n' ;;
        4) printf '{"method": "textDocument/didClose", "params": {"textDocument": {"uri": "%s"}}}\n' "$uri" ;;
        5) printf '{"method": "$/cancelRequest", "params": {"id": 2}}\n' ;;
        6) printf '{"id": 22, "method": "shutdown"}\n{"method": "exit"}\n' ;;
        esac
        request 30 formatting 0 0
    } >"$folder/${source//\//_}.messages"
    number=$((number + 1))
done
