#!/usr/bin/env bash
# Fills a folder with short inputs. Each starts a different sequence of calls.
# usage: host_corpus.sh FOLDER
set -euo pipefail
mkdir -p "$1"
rm -f "$1"/*
for number in {1..40}; do
    printf '%s' "$number" | sha256sum | head -c 32 >"$1/$number"
done
