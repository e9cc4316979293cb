# What `run` and `check` have in common: work in named phases, each one line long while it goes well. Sourced
# by bash after `logs` names the folder for their logs.

phase_times=()
phase_ticker=
phase_children=()  # what a phase has started beside itself; none of it outlives the script
trap 'kill $phase_ticker "${phase_children[@]}" 2>/dev/null' EXIT

phase_milliseconds() { echo $((${EPOCHREALTIME/[.,]/} / 1000)); }

phase_seconds() { printf '%d.%d s' $(($1 / 1000)) $(($1 % 1000 / 100)); }

# phase NAME WHAT COMMAND...: runs the command with its output in a log. When it fails: the end of the log, from
# the last line on that begins with "----" if there is one, and the whole script ends with status 1.
phase() {
    local name=$1 what=$2 status=0 started took log
    shift 2
    log=$logs/$(tr 'A-Z ' 'a-z-' <<<"$name").log
    mkdir -p "$logs"
    : >"$log"
    started=$(phase_milliseconds)
    printf '%-16s %s ... ' "$name" "$what"
    if [ -t 1 ]; then
        phase_show_progress "$name" "$what" "$log" &
        phase_ticker=$!
    fi
    "$@" >>"$log" 2>&1 </dev/null || status=$?
    if [ -n "$phase_ticker" ]; then
        kill "$phase_ticker" 2>/dev/null
        wait "$phase_ticker" 2>/dev/null
        phase_ticker=
        printf '\r%-16s %s ... ' "$name" "$what"
    fi
    took=$(phase_seconds $(($(phase_milliseconds) - started)))
    phase_times+=("$(printf '%10s  %s' "$took" "$name")")
    if [ $status -eq 0 ]; then
        printf '%-12s\n' "$took"
        return
    fi
    printf 'FAILED after %s\n\n' "$took"
    tail -n "${PHASE_TAIL:-40}" "$log" | awk '/^----/ { said = "" } { said = said $0 "\n" } END { printf "%s", said }'
    printf '\n%s failed (status %d). All that was said: %s\n' "$name" "$status" "$log"
    exit 1
}

# On a terminal, how far a build or a test run has come, at the end of the phase's line.
phase_show_progress() {
    local step last=
    while sleep 0.5; do
        step=$(tail -n 3 "$3" 2>/dev/null | grep -oE '^\[[0-9]+/[0-9]+\]|^ *[0-9]+/[0-9]+ Test' | tail -n 1)
        step=${step% Test}
        [ -n "$step" ] && [ "$step" != "$last" ] || continue
        last=$step
        printf '\r%-16s %s ... %s' "$1" "$2" "$step"
    done
}
