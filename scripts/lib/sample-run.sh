# Steps of trying out the real program against a sample station. For scripts that stand in the
# root folder of the sources and have built ostravelin, sample_station and make_database.
readonly build=$PWD/build/release
version=$(sed -n 's/^project(ostravelin VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
readonly title="Ostravelin ${version:?not found in CMakeLists.txt}"

# All that is thrown away at the end: a folder, which the script makes, and processes.
work= pids=()
clean_up() {
  trap - EXIT INT TERM HUP
  for pid in "${pids[@]}"; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  [ -z "$work" ] || rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

say() { printf '\n== %s\n' "$*"; }

# wait_for SECONDS COMMAND...: until the command succeeds or the program has ended
wait_for() {
  local until=$((SECONDS + $1))
  until "${@:2}"; do
    if [ "$SECONDS" -ge "$until" ] || { [ -n "${program:-}" ] && ! kill -0 "$program"; }; then
      echo "This took longer than $1 s or failed: ${*:2}" >&2
      return 1
    fi
    sleep 0.2
  done
}

is_window_in_sight() { xwininfo -name "$title" 2>/dev/null | grep -q IsViewable; }

wait_for_window() {
  wait_for 60 is_window_in_sight
}

has_window_manager() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 0x; }

# start_virtual_display [SIZE]
# A window that a starting window manager comes upon may be left out of sight.
start_virtual_display() {
  Xvfb -displayfd 3 -screen 0 "${1:-1024x768}x24" -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
  pids=($! "${pids[@]}")
  wait_for 10 test -s "$work/display"
  export DISPLAY=:$(<"$work/display")
  openbox >/dev/null 2>&1 &
  pids=($! "${pids[@]}")
  wait_for 30 has_window_manager
}

# start_station OPTION...
# Requests reach the station as the system's HTTP proxy, so that addresses keep their port 80.
start_station() {
  "$build/tests/support/sample_station" "$@" >"$work/port" &
  pids=($! "${pids[@]}")
  wait_for 10 test -s "$work/port"
  export http_proxy=http://127.0.0.1:$(<"$work/port")
}

# The next full minute that leaves the program the time to start, for `date -d`.
next_full_minute() { echo "@$(((($(date +%s) + 8) / 60 + 1) * 60))"; }

# put_task FOLDER NAME ADDRESS FILE TIME: makes it the only task of that program folder
put_task() {
  local database=$1/database/ostravelin.mdb
  rm -f "$database"
  { cat store/schema.sql - <<SQL; } >"$work/tasks.sql"
INSERT INTO Opdrachtgegevens VALUES ('$2', '$3', '$4', $(date -d "$5" +%-M), 1);
INSERT INTO Tijden VALUES ('$2', $(date -d "$5" +%u), $(date -d "$5" +%-H));
SQL
  "$build/store/make_database" "$work/tasks.sql" "$database"
}

# put_settings AUDIO-FOLDER SPC-FOLDER SPC: what the program finds with XDG_CONFIG_HOME=$work/config
put_settings() {
  mkdir -p "$1" "$2" "$work/config"
  printf '%s\r\n' "[Bestandsmappen]" "Bestemmingsmap=$1" "SPCmap=$2" \
    "[Opties]" "SPC=$3" "preXP=0" >"$work/config/Ostravelin.ini"
}

# start_program FOLDER
start_program() {
  XDG_CONFIG_HOME=$work/config "$1/ostravelin" &
  program=$!
  pids=($program "${pids[@]}")
  wait_for_window
}

end_program() {
  kill "$program" 2>/dev/null || true
  wait "$program" 2>/dev/null || true
  program=
}

# take_picture NAME: of the window in front, with its frame, into the folder $pictures
take_picture() {
  sleep 0.5
  import -frame -window "$(xdotool getactivewindow)" "$pictures/$1.png"
}

# press KEY...: a key reaches the window that the one before has opened only when that has come to
# the front
press() {
  for key in "$@"; do
    xdotool key --clearmodifiers "$key"
    sleep 0.7
  done
}
