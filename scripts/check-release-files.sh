#!/usr/bin/env bash
# Checks the files a release ships beside the library:
#
#   scripts/check-release-files.sh BUILD_DIR
#
# - packaging/reapack/ZOLVA.ext parses as a ReaPack package description, its
#   @version is the project version of BUILD_DIR's configuration, and it
#   provides every library the build made under that library's platform;
# - a macOS library passes scripts/check-macos-module.sh (universal, one
#   export, system libraries only, the build's minimum macOS, arm64 signed);
# - a Linux library exports only ReaperPluginEntry, needs neither libstdc++
#   nor libgcc_s (it carries both) and no glibc symbol version above 2.31;
#   the highest one it needs is printed;
# - the release archive in BUILD_DIR/release, when there is one, holds the
#   library, README.md and LICENSE;
# - examples/*.lua compile with a Lua compiler (Debian's lua5.4 is installed
#   when none is found), and every reaper.ZOLVA_ function they call exists in
#   the generated reference with the number of arguments passed.
set -euo pipefail
cd "$(dirname "$0")/.."

say() { printf 'check-release-files.sh: %s\n' "$*" >&2; }
die() { say "$*"; exit 1; }

[ $# -eq 1 ] || die "usage: scripts/check-release-files.sh BUILD_DIR"
build=${1%/}
[ -f "$build/CMakeCache.txt" ] || die "$build is not a configured build folder (no CMakeCache.txt)"

failures=0
fail() { say "$*"; failures=$((failures + 1)); }

# --- ReaPack package description -------------------------------------------
ext=packaging/reapack/ZOLVA.ext
[ -f "$ext" ] || die "$ext is missing"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:[A-Z]*=//p' "$build/CMakeCache.txt")
minimum_macos=$(sed -n 's/^CMAKE_OSX_DEPLOYMENT_TARGET:[A-Z]*=//p' "$build/CMakeCache.txt")
[ -n "$version" ] || die "no CMAKE_PROJECT_VERSION in $build/CMakeCache.txt"

# The description: "@tag value" lines, each tag once; a tag may continue on the
# indented lines after it. @provides lines are "[platform] file URL".
declare -A tags=()
provides=()
current=""
lineno=0
while IFS= read -r line || [ -n "$line" ]; do
  lineno=$((lineno + 1))
  line=${line%$'\r'}
  if [[ $line =~ ^@([a-z]+)([[:space:]]+(.*))?$ ]]; then
    current=${BASH_REMATCH[1]}
    [ -z "${tags[$current]+x}" ] || fail "$ext:$lineno: @$current appears twice"
    tags[$current]=${BASH_REMATCH[3]:-}
  elif [[ $line =~ ^[[:space:]]+[^[:space:]] || -z $line ]]; then
    [ -n "$current" ] || fail "$ext:$lineno: text before the first tag"
    if [ "$current" = provides ] && [ -n "$line" ]; then provides+=("$line"); fi
  else
    fail "$ext:$lineno: neither a tag nor an indented continuation: $line"
  fi
done <"$ext"
for tag in description version author changelog provides; do
  [ -n "${tags[$tag]+x}" ] || fail "$ext: no @$tag"
done
[ "${tags[version]:-}" = "$version" ] ||
  fail "$ext: @version is \"${tags[version]:-}\", the project version (CMakeLists.txt) is \"$version\""

known_platforms=" all windows win32 win64 windows-arm64ec darwin darwin32 darwin64 darwin-arm64 linux linux32 linux64 linux-armv7l linux-aarch64 "
declare -A provided=()
for line in "${provides[@]}"; do
  if [[ $line =~ ^[[:space:]]+\[([a-z0-9-]+)\][[:space:]]+([^[:space:]]+)[[:space:]]+(https://[^[:space:]]+)$ ]]; then
    platform=${BASH_REMATCH[1]}
    file=${BASH_REMATCH[2]}
    url=${BASH_REMATCH[3]}
    [[ $known_platforms == *" $platform "* ]] || fail "$ext: unknown ReaPack platform [$platform]"
    [[ $url == *'$version'* ]] || fail "$ext: the link for $file does not name the version (\$version)"
    provided[$file]=$platform
  else
    fail "$ext: a @provides line is not \"[platform] file https://...\": $line"
  fi
done

# The platform ReaPack must name for each library file the project builds.
platform_of() {
  case "$1" in
    reaper_zolva-x64.dll) echo win64 ;;
    reaper_zolva.dylib) echo darwin ;;
    reaper_zolva-x86_64.so) echo linux64 ;;
    reaper_zolva-aarch64.so) echo linux-aarch64 ;;
    *) echo "" ;;
  esac
}
for file in reaper_zolva-x64.dll reaper_zolva.dylib reaper_zolva-x86_64.so reaper_zolva-aarch64.so; do
  want=$(platform_of "$file")
  [ "${provided[$file]:-}" = "$want" ] || fail "$ext: no \"[$want] $file\" line in @provides"
done

# The newest glibc symbol version a Linux library may need: 2.31 is Ubuntu
# 20.04's and Debian 11's C library.
linux_glibc_limit=2.31

# What a Linux library needs of the system it loads on, read with readelf
# (binutils), which reads the ELF files of every architecture.
check_linux_module() {
  local library=$1 needed versions symbols exports foreign newer highest
  if ! command -v readelf >/dev/null 2>&1; then
    fail "$library: not checked: readelf (binutils) is missing"
    return
  fi
  needed=$(readelf -dW "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p')
  # Versions the library needs ("Name: GLIBC_2.14  Flags: none  Version: 5").
  versions=$(readelf -VW "$library" | sed -n 's/^ *0x[0-9a-f]*: *Name: \([^ ]*\) *Flags:.*/\1/p' | sort -u)
  symbols=$(readelf --dyn-syms -W "$library")
  exports=$(awk '$7 != "UND" && ($5 == "GLOBAL" || $5 == "WEAK" || $5 == "UNIQUE") {sub(/@.*/, "", $8); print $8}' <<<"$symbols")
  [ "$exports" = ReaperPluginEntry ] || fail "$library must export only ReaperPluginEntry; it exports: $(echo $exports)"
  foreign=$(grep -E '^(libstdc\+\+|libgcc_s)\.' <<<"$needed" || true)
  [ -z "$foreign" ] || fail "$library needs the system's C++ runtime: $(echo $foreign)"
  foreign=$(grep -vE '^GLIBC_[0-9.]+$' <<<"$versions" || true)
  [ -z "$foreign" ] || fail "$library needs symbol versions of other libraries than glibc: $(echo $foreign)"
  highest=$(sed -n 's/^GLIBC_//p' <<<"$versions" | sort -V | tail -n 1)
  say "$library: needs $(echo $needed); highest glibc version ${highest:-(none)}, at most $linux_glibc_limit allowed"
  # The symbols that need a version above the limit, for the message.
  newer=$(awk -v limit="$linux_glibc_limit" '
    function above(v, l,   a, b, i) {
      split(v, a, "."); split(l, b, ".")
      for (i = 1; i <= 3; i++) if (a[i] + 0 != b[i] + 0) return a[i] + 0 > b[i] + 0
      return 0
    }
    $8 ~ /@GLIBC_[0-9.]+$/ { v = $8; sub(/.*@GLIBC_/, "", v); if (above(v, limit)) print $8 }' <<<"$symbols")
  [ -z "$newer" ] || fail "$library needs glibc symbols newer than $linux_glibc_limit: $(echo $newer)"
}

libraries=$(find "$build" -path "$build/release" -prune -o -type f \
  \( -name 'reaper_zolva*.so' -o -name 'reaper_zolva*.dylib' -o -name 'reaper_zolva*.dll' \) -print)
[ -n "$libraries" ] || fail "$build holds no reaper_zolva library: build it first"
while IFS= read -r library; do
  [ -n "$library" ] || continue
  name=${library##*/}
  want=$(platform_of "$name")
  if [ -z "$want" ]; then
    fail "$library: a library name ReaPack does not know ($ext provides: ${!provided[*]})"
  elif [ "${provided[$name]:-}" != "$want" ]; then
    fail "$ext does not provide $name for [$want]"
  fi
  if [ "$name" = reaper_zolva.dylib ]; then
    scripts/check-macos-module.sh "$library" "$minimum_macos" || fail "$library is not a module macOS $minimum_macos loads"
  elif [[ $name == *.so ]]; then
    check_linux_module "$library"
  fi
done <<<"$libraries"
say "$ext: checked against version $version (${#provided[@]} platforms provided)"

# --- Release archive ---------------------------------------------------------
for archive in "$build"/release/ZOLVA-"$version"-*.tar.gz "$build"/release/ZOLVA-"$version"-*.zip; do
  [ -f "$archive" ] || continue
  case "$archive" in
    *.zip)
      if command -v unzip >/dev/null 2>&1; then
        listing=$(unzip -Z1 "$archive")
      elif command -v python3 >/dev/null 2>&1; then
        listing=$(python3 -c 'import sys, zipfile; print("\n".join(zipfile.ZipFile(sys.argv[1]).namelist()))' "$archive")
      else
        say "$archive: not checked (neither unzip nor python3 is installed)"
        continue
      fi
      ;;
    *) listing=$(tar -tzf "$archive") ;;
  esac
  wanted_files="README.md LICENSE docs/api.md docs/zolva.lua examples/zolva_example.lua"
  [ ! -f CHANGELOG.md ] || wanted_files="$wanted_files CHANGELOG.md"
  for wanted in $wanted_files; do
    grep -qx "[^/]*/$wanted" <<<"$listing" || fail "$archive lacks $wanted"
  done
  grep -qE '^[^/]*/reaper_zolva[^/]*\.(so|dylib|dll)$' <<<"$listing" || fail "$archive lacks the library"
  say "$archive: complete"
done

# --- Example scripts -----------------------------------------------------------
as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}
find_lua() {
  luac=""
  lua=""
  local c
  for c in luac5.4 luac; do
    if command -v "$c" >/dev/null 2>&1; then luac=$c; break; fi
  done
  for c in lua5.4 lua; do
    if command -v "$c" >/dev/null 2>&1; then lua=$c; break; fi
  done
}
find_lua
if [ -z "$luac" ] || [ -z "$lua" ]; then
  command -v apt-get >/dev/null 2>&1 || die "no Lua compiler found: install Lua 5.4 (luac and lua)"
  say "installing lua5.4"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends lua5.4 >/dev/null
  find_lua
  [ -n "$luac" ] && [ -n "$lua" ] || die "lua5.4 installed, but no luac or lua found"
fi

# The reference: freshly generated when the build's generator runs here (a
# cross-built one does not), otherwise the committed copy, which the test
# zolva_api_reference_current keeps equal to it.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
reference=docs/zolva.lua
generator="$build/tools/api_reference/zolva_api_reference"
if [ -x "$generator" ] && "$generator" "$scratch" >/dev/null 2>&1; then
  reference="$scratch/zolva.lua"
fi
[ -f "$reference" ] || die "$reference is missing"

examples=(examples/*.lua)
[ -f "${examples[0]}" ] || die "no example scripts in examples/"
for example in "${examples[@]}"; do
  "$luac" -p "$example" || fail "$example does not compile"
done

# Every reaper.ZOLVA_ call: its name and the number of arguments at its top
# level, skipping strings and comments, against the reference's definitions.
"$lua" - "$reference" "${examples[@]}" <<'LUA' || failures=$((failures + 1))
local function read(path)
  local file = assert(io.open(path, "rb"))
  local text = file:read("a")
  file:close()
  return text
end

local arity = {}
for name, params in read(arg[1]):gmatch("\nfunction reaper%.(ZOLVA_[%w_]+)%(([^)]*)%) end") do
  local count = 0
  for _ in params:gmatch("[^,%s]+") do count = count + 1 end
  arity[name] = count
end
if next(arity) == nil then
  io.stderr:write(arg[1] .. ": no function definitions found\n")
  os.exit(1)
end

-- Skips a string, comment or long bracket starting at i; returns the index after it, or nil.
local function skip(text, i)
  local c = text:sub(i, i)
  if c == '"' or c == "'" then
    local j = i + 1
    while j <= #text do
      local d = text:sub(j, j)
      if d == "\\" then j = j + 2
      elseif d == c then return j + 1
      else j = j + 1 end
    end
    return #text + 1
  end
  local long = text:match("^%[(=*)%[", i)
  if long then
    local _, close = text:find("]" .. long .. "]", i, true)
    return (close or #text) + 1
  end
  if text:sub(i, i + 1) == "--" then
    long = text:match("^%-%-%[(=*)%[", i)
    if long then
      local _, close = text:find("]" .. long .. "]", i, true)
      return (close or #text) + 1
    end
    local newline = text:find("\n", i, true)
    return (newline or #text) + 1
  end
  return nil
end

-- The number of arguments of the call whose "(" is at open.
local function count_arguments(text, open)
  local depth, count, seen = 0, 0, false
  local i = open
  while i <= #text do
    local after = skip(text, i)
    if after then
      if depth == 1 then seen = true end
      i = after
    else
      local c = text:sub(i, i)
      if c == "(" or c == "{" or c == "[" then
        if depth >= 1 then seen = true end
        depth = depth + 1
      elseif c == ")" or c == "}" or c == "]" then
        depth = depth - 1
        if depth == 0 then return seen and count + 1 or 0 end
      elseif c == "," and depth == 1 then
        count = count + 1
      elseif depth == 1 and not c:match("%s") then
        seen = true
      end
      i = i + 1
    end
  end
  return nil
end

local failed, calls = false, 0
for k = 2, #arg do
  local path = arg[k]
  local text = read(path)
  local i = 1
  while i <= #text do
    local after = skip(text, i)
    if after then
      i = after
    else
      local s, e, name = text:find("^reaper%.(ZOLVA_[%w_]+)", i)
      if s and not text:sub(i - 1, i - 1):match("[%w_.]") then
        local line = select(2, text:sub(1, s):gsub("\n", "")) + 1
        local open = text:find("^%s*%(", e + 1)
        local where = path .. ":" .. line .. ": reaper." .. name
        if arity[name] == nil then
          io.stderr:write(where .. " is not an extension function\n")
          failed = true
        elseif open then
          local paren = text:find("(", open, true)
          local n = count_arguments(text, paren)
          calls = calls + 1
          if n ~= arity[name] then
            io.stderr:write(string.format("%s is called with %s arguments; it takes %d\n", where,
              tostring(n), arity[name]))
            failed = true
          end
        end
        i = e + 1
      else
        i = i + 1
      end
    end
  end
end
for k = 2, #arg do
  for name in read(arg[k]):gmatch("APIExists%(%s*[\"']([%w_]+)[\"']") do
    if name:match("^ZOLVA_") and arity[name] == nil then
      io.stderr:write(arg[k] .. ": reaper.APIExists asks for " .. name .. ", which is not an extension function\n")
      failed = true
    end
  end
end
if failed then os.exit(1) end
print(string.format("%d reaper.ZOLVA_ calls match the reference", calls))
LUA

if ((failures)); then
  die "$failures check(s) failed"
fi
say "all release files are in order"
