#!/usr/bin/env bash
# Solves models with real Gurobi and shows everything: the model, the summary, the solution file.
# Models: those named, else examples/diet.nl. Works on a copy, so nothing is left in the tree.
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/..

models=("$@")
((${#models[@]})) || models=("$root/examples/diet.nl")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

for model in "${models[@]}"; do
  name=${model##*/}
  cp "$model" "$folder/"
  # A .nl file is made for programs; where the modeling source lies beside it, people see that.
  source=${model%.*}.mod
  [[ -e $source ]] || source=$model
  printf '== %s\n' "${source##*/}"
  head -n 60 "$source"
  printf '\n== grblink %s\n' "$name"
  (cd "$folder" && "$root/build/release/bin/grblink" "$name")
  solution=$folder/${name%.*}.sol
  if [[ -e $solution ]]; then
    printf '\n== %s\n' "${solution##*/}"
    cat "$solution"
  fi
done
