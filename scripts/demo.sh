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
  # The names of a .nl file's elements.
  for names in "${model%.*}".{row,col}; do
    if [[ -e $names ]]; then cp "$names" "$folder/"; fi
  done
  # A .nl file is made for programs; where the modeling source lies beside it, people see that.
  source=$model
  for written in "${model%.*}.mod" "$(dirname "$model")/pyomo_${name%.*}.py"; do
    if [[ -e $written ]]; then source=$written; fi
  done
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
