#!/bin/sh
# Runs a command against a PulseAudio server of its own: a null sink named qxnull in a private
# runtime directory, so nothing reaches (or depends on) the machine's speakers or a desktop
# sound server. The command finds the sink's name in QX_SOUND_SINK and records its monitor.
#
# The server runs as whoever starts it, root included: without --system it only warns about
# root and keeps its socket, cookie and state in the private directory (--system would want
# the "pulse" user and the system-wide socket). -n skips the default configuration, so only
# the two modules given here are loaded; --exit-idle-time=-1 keeps it up between sounds.
set -eu

if ! command -v pulseaudio >/dev/null 2>&1 || ! command -v parec >/dev/null 2>&1; then
    echo "with-pulseaudio: pulseaudio and parec (Debian: pulseaudio, pulseaudio-utils) are needed" >&2
    exit 1
fi

dir=$(mktemp -d "${TMPDIR:-/tmp}/qxpulse.XXXXXX")
chmod 700 "$dir"
pid=""
stop() {
    if [ -n "$pid" ]; then
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    fi
    rm -rf "$dir"
}
trap stop EXIT
trap 'exit 1' INT TERM

export XDG_RUNTIME_DIR="$dir"
HOME="$dir" pulseaudio -n --daemonize=no --system=no --use-pid-file=no \
    --exit-idle-time=-1 --realtime=no --high-priority=no --log-target=stderr \
    -L "module-null-sink sink_name=qxnull rate=44100 channels=1" \
    -L "module-native-protocol-unix auth-anonymous=1 socket=$dir/native" \
    2>"$dir/server.log" &
pid=$!
export PULSE_SERVER="unix:$dir/native"
tries=0
until pactl info >/dev/null 2>&1; do
    tries=$((tries + 1))
    if [ "$tries" -gt 100 ] || ! kill -0 "$pid" 2>/dev/null; then
        echo "with-pulseaudio: the server did not start:" >&2
        cat "$dir/server.log" >&2
        exit 1
    fi
    sleep 0.1
done

export QX_SOUND_SINK=qxnull
status=0
"$@" || status=$?
exit "$status"
