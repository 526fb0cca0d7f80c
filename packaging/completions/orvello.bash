# Completion of orvello's commands and, after goto, of the indexes and labels of the Spaces.
# shellcheck shell=bash

_orvello() {
    local current=${COMP_WORDS[COMP_CWORD]} candidates word
    COMPREPLY=()
    case $COMP_CWORD:${COMP_WORDS[1]} in
        1:*) candidates=$'dump\ngoto\nwindows' ;;
        2:goto) candidates=$(orvello dump 2>/dev/null | sed -nE '/^ *"(index|tag)" :/{s/^[^:]*: "?//;s/"?,?$//;s/\\(.)/\1/g;p}') ;;
        *) return ;;
    esac
    while IFS= read -r word; do
        [[ -n $word && $word == "$current"* ]] && COMPREPLY+=("$(printf '%q' "$word")")
    done <<<"$candidates"
}

complete -F _orvello orvello
