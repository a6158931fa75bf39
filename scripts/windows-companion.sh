#!/usr/bin/env bash
# Proves that paramtool for Windows, run by Wine, does what the one for Linux does: the same commands on the same files
# and against the same recorders, each system with its own programs; what they write into a pipe, their exit codes and
# every file that they save have to be the same byte for byte.
#
#   scripts/windows-companion.sh LINUX_BIN WINDOWS_BIN   the folders of the programs (build/release/bin, build/windows/bin)
#
# What may differ, and is made equal before it is compared:
#   - the port of a recorder, which the system chooses, in reports and in the lists of fleets;
#   - the time of a run, in a printed page, in the name of a backup or its folder, and the seconds that it took; with them the order in which
#     a fleet tells its recorders, and how wide its table is;
#   - the name of the program in its help, and whole names of files (C:\... in place of /...);
#   - what the system itself says of a connection that fails, behind the words of paramtool's own.
set -euo pipefail
source "$(dirname "$0")/both-systems.sh" companion "$1" "$2"
# Names in a command line get to Wine by the locale of this machine; a terminal is none of this.
export LC_ALL=C.UTF-8

# A folder of each system, with a name that is not of ASCII.
for system in linux windows; do mkdir -p "$work/$system/設定 と 予備" "$work/told/$system"; done

program() { # SYSTEM NAME -- sets `program`
  if [ "$1" = linux ]; then program=("$linux/$2"); else program=(wine "$windows/$2.exe"); fi
}

declare -A ports
start() { # NAME OPTIONS... -- a recorder of that name for each system
  local name=$1 system line
  shift
  for system in linux windows; do
    program $system recorder-sim
    mkfifo "$work/ready"
    "${program[@]}" --tcp 127.0.0.1:0 --dump "$work/told/$system/registers of $name" "$@" > "$work/ready" 2> "$work/$system/$name.trace" &
    running+=($!)
    read -r line < "$work/ready"
    rm "$work/ready"
    line=${line##*:}
    ports[$system-$name]=${line//[^0-9]/}
  done
}

cat > "$work/made-equal" << 'SED'
s/127\.0\.0\.1([:_])[0-9]+/127.0.0.1\1PORT/g
s/[0-9]{8}-[0-9]{6}/DATE-TIME/g
s/("seconds": )[0-9.]+/\1N/
s/(（|\()[0-9]+\.[0-9] (秒|s)(）|\))$/\1N \2\3/
s/ +[0-9]+\.[0-9]$/ N/
s/^(Usage|使い方): .*[\/\\]paramtool(\.exe)? /\1: paramtool /
s/(Connection refused|接続が拒否されました|The remote host refused[^)）]*)/REFUSED/
s/(\/tmp|Z:\\)[^" ]*(\/|\\)設定 と 予備(\/|\\+)/FOLDER\//g
:names
s/(FOLDER\/[^"\\]*)\\+/\1\//
t names
SED
made_equal() { # FILE
  sed -E -i -f "$work/made-equal" "$1"
  sed -E -i 's/  +/  /g; s/^[- ]+$/-/' "$1" # the table of a fleet
  case $1 in
    *.err) sed -E -i 's|^paramtool: [0-9]+/|paramtool: N/|' "$1" && sort -o "$1" "$1" ;;
  esac
}

calls=0 status=0
differs() {
  echo "differs: $*" >&2
  status=1
}

# both EXIT WORDS... -- the command on both systems, in their folders; @NAME is the address of that recorder. With a
# file `input` in the folder of what is told, that is its standard input.
both() {
  local expected=$1 system word code
  shift
  calls=$((calls + 1))
  for system in linux windows; do
    local words=()
    for word in "$@"; do
      [[ $word = @* ]] && word=tcp:127.0.0.1:${ports[$system-${word#@}]}
      words+=("$word")
    done
    program $system paramtool
    code=0
    (cd "$work/$system/設定 と 予備" && "${program[@]}" "${words[@]}" < "${input:-/dev/null}" \
      > "$work/told/$system/$calls.out" 2> "$work/told/$system/$calls.err") || code=$?
    made_equal "$work/told/$system/$calls.out"
    made_equal "$work/told/$system/$calls.err"
    [ $code = "$expected" ] || differs "$*: $system ends with $code, not with $expected: $(head -c 400 "$work/told/$system/$calls.err")"
  done
  for word in out err; do
    cmp -s "$work/told/linux/$calls.$word" "$work/told/windows/$calls.$word" ||
      differs "$*: $(diff "$work/told/linux/$calls.$word" "$work/told/windows/$calls.$word" | head -6 || true)"
  done
}

# list NAME ROW... -- a fleet's list for each system
list() {
  local name=$1 system row
  shift
  for system in linux windows; do
    {
      echo "name,address,model,file"
      for row in "$@"; do
        [[ $row =~ @([a-z0-9]+) ]] && row=${row/@${BASH_REMATCH[1]}/tcp:127.0.0.1:${ports[$system-${BASH_REMATCH[1]}]}}
        echo "$row"
      done
    } > "$work/$system/設定 と 予備/$name"
  done
}

# --- Files
both 0 set default:KOV C00TAG=炉の温度 C02COLR=青 -o '炉 1.KOV'
both 0 set '炉 1.KOV' 'C*COLR=3' -o 二.KOV --json
both 2 set '炉 1.KOV' C00COLR=無い色 -o 三.KOV
both 0 set default:RUG J00IPA1=192 J00IPA2=168 E00TSBA=8:05 -o 新.RUG --lang en
both 0 check '炉 1.KOV' 新.RUG
both 2 check 無い.KOV
both 2 check 無い.KOV 新.RUG --json --lang en
printf 'LOADER ,\r\nC00TAG,\x83\x8d\x81\r\nH00PAS1;1\r\n' | tee "$work/linux/設定 と 予備/悪い.KOV" > "$work/windows/設定 と 予備/悪い.KOV"
both 1 check 悪い.KOV --model KOV
both 1 check 悪い.KOV --model KOV --json --lang en
for language in ja en; do
  both 0 show '炉 1.KOV' --lang $language
  both 0 show '炉 1.KOV' CH3 'group 2' mail --json --lang $language
  both 1 compare '炉 1.KOV' 二.KOV --html "比較 $language.html" --lang $language
  both 1 compare '炉 1.KOV' default:KOV --only alarms --only 'C*TAG' --json --lang $language
  both 0 convert '炉 1.KOV' --to RUG -o "換 $language.RUG" --html "換 $language.html" --lang $language
  both 0 print '炉 1.KOV' -o "頁 $language.txt" --lang $language
  both 0 --help --lang $language
  both 0 help fleet --lang $language
done
both 0 compare '炉 1.KOV' '炉 1.KOV'
both 0 merge 二.KOV '炉 1.KOV' --only 'C*COLR' -o 合.KOV
both 0 merge 二.KOV '炉 1.KOV' --only CH3-6 --ignore 'C*TAG' -o 二.KOV --json
both 64 show
both 64 check --unheard-of 炉
echo '01 03 0F A6 00 01 67 3D' > "$work/input"
input=$work/input both 0 decode - --model KOV --json
input=$work/input both 0 decode - --model KOV --lang en

# --- A recorder
start kov --model KOV --trace-frames
start old --model KOV --firmware V05A
start rug --model RUG
start one --model RUG
start silent --model RUG --fault no-reply:100%
both 1 read @kov -o '読 1.KOV'
both 0 show @rug CH1 --lang en
both 0 set '読 1.KOV' C00TAG=炉 A00A1VL=12.5 -o 書.KOV
both 1 write 書.KOV @kov
both 0 write 書.KOV @kov --yes --store --backup '前 の.KOV' --json
both 0 write 書.KOV @kov --yes --lang en
both 1 write 書.KOV @old
both 0 compare 書.KOV @kov --lang en --ignore E00TTSM --ignore E00TTEM
both 2 write 書.KOV @rug --yes
both 2 read tcp:127.0.0.1:1 -o 無.KOV
both 2 read tcp:127.0.0.1:1 -o 無.KOV --json --lang en

# --- A fleet, of which one is dead and one does not answer
list 工場.csv '炉 1,@rug,RUG,炉 1.RUG' '乾燥,@one,,予備/乾燥.RUG' '切,tcp:127.0.0.1:1,RUG,切.RUG' '黙,@silent,RUG,黙.RUG'
both 1 fleet 工場.csv read --no-commit --timeout 3
both 1 fleet 工場.csv read --no-commit --timeout 3 --json
both 1 fleet 工場.csv compare --timeout 3 --lang en
both 1 fleet 工場.csv compare 新.RUG --files --json
list 書.csv '炉 1,@rug,RUG,炉 1.RUG' '乾燥,@one,,予備/乾燥.RUG'
both 0 set '炉 1.RUG' C00TAG=窯 -o '炉 1.RUG'
both 1 fleet 書.csv write --lang en
both 0 fleet 書.csv write --yes --store --backup-folder 前
both 0 fleet 書.csv compare
both 2 fleet 無い.csv read

stop
input=$work/linux/kov.trace both 0 decode - --lang en
for name in kov old rug one; do
  cmp -s "$work/told/linux/registers of $name" "$work/told/windows/registers of $name" || differs "the registers of $name"
done

# --- Every file that was saved
for system in linux windows; do
  cd "$work/$system/設定 と 予備"
  find . -depth -mindepth 1 | while read -r file; do
    name=$(basename "$file" | sed -E 's/[0-9]{8}-[0-9]{6}/DATE-TIME/; s/127\.0\.0\.1_[0-9]+/127.0.0.1_PORT/')
    [ "$name" = "$(basename "$file")" ] || mv "$file" "$(dirname "$file")/$name"
  done
  rm 工場.csv 書.csv
  # In code page 932 and in UTF-8, for which the numbers of a time are alike.
  LC_ALL=C sed -E -i 's|20[0-9]{2}([/-])[0-9]{2}.[0-9]{2}[ T][0-9:]+|DATE TIME|g' 頁*.txt ./*.html
done
cd /
diff -rq "$work/linux/設定 と 予備" "$work/windows/設定 と 予備" || differs "the saved files"
files=$(find "$work/windows/設定 と 予備" -type f | wc -l)
[ "$files" -ge 15 ] || differs "no more than $files files were saved"
[ $status -eq 0 ] && echo "paramtool is the same on both systems: $calls commands, $files files"
exit $status
