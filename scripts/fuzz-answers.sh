#!/usr/bin/env bash
# Fuzzes the answer grammar with libFuzzer (clang) under AddressSanitizer and
# UndefinedBehaviorSanitizer for the given number of seconds (60 by default). The build goes to
# build/fuzz/; the corpus grows in build/fuzz/corpus/.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
out=build/fuzz
mkdir -p "$out/corpus"
clang++ -std=c++20 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
    -I. fuzz/AnswerFuzzer.cpp host/ed/Answer.cpp host/ed/Keywords.cpp host/text/CString.cpp \
    host/text/ResourceTable.cpp host/Assert.cpp -o "$out/AnswerFuzzer"
# Seeds: one line of each form.
for seed in "0,0" "@10,-5.5" "drag 1,2,3" "^C" "'PickHeight" "Arc # note" "" "1,2,3,4"; do
    printf '%s' "$seed" > "$out/corpus/seed-$(printf '%s' "$seed" | md5sum | cut -c1-8)"
done
"$out/AnswerFuzzer" -max_total_time="$seconds" -max_len=256 "$out/corpus"
