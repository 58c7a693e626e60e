# What every script starts with: the root of the tree, and packages installed when they are missing.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"
: "${CAMPOTIPO_BUILD_ROOT:=$root/build}"

say() { printf '\n== %s\n' "$*"; }
die() {
  printf 'error: %s\n' "$*" >&2
  exit 2
}

usage() { # prints the comment at the top of the script
  sed -n '2,/^[^#]/s/^# //p' "scripts/$(basename "$0")"
  exit 0
}

# for_prefix PREFIX: sets as to what commands that write below the prefix are run by.
installed=share/campotipo/installed.txt
for_prefix() {
  local place=$1
  until [ -e "$place" ]; do place=$(dirname "$place"); done
  as=(env)
  [ -w "$place" ] || as=(sudo)
  command -v "${as[0]}" > /dev/null || die "$place cannot be written and there is no sudo: give a PREFIX of your own"
}

# need PACKAGE...: installs those Debian packages that are not there yet.
need() {
  local missing=() package sudo=()
  if ! command -v dpkg-query > /dev/null; then
    say "this is no Debian: taken to be there are what Debian calls $*"
    return 0
  fi
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2> /dev/null | grep -q 'install ok installed' ||
      missing+=("$package")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo > /dev/null || die "packages are missing and this is neither root nor sudo: ${missing[*]}"
    sudo=(sudo)
  fi
  say "installing ${missing[*]}"
  "${sudo[@]}" apt-get update -qq
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" > /dev/null
}

# The files of the tree as a list for tar, of a checkout or of a plain copy.
tree_files() {
  if git rev-parse --git-dir > /dev/null 2>&1; then
    git ls-files -z --cached --others --exclude-standard | while IFS= read -r -d '' file; do
      [ ! -f "$file" ] || printf '%s\0' "$file"
    done
  else
    find . \( -path ./build -o -path ./.git \) -prune -o -type f -print0
  fi
}

build_packages=(g++ cmake ninja-build)

# build FOLDER TARGET... -- OPTION...: configures build/FOLDER with the options and builds.
build() {
  local folder=$CAMPOTIPO_BUILD_ROOT/$1 targets=()
  shift
  while [ "$#" -gt 0 ] && [ "$1" != -- ]; do
    targets+=("$1")
    shift
  done
  [ "$#" -eq 0 ] || shift
  cmake -S "$root" -B "$folder" -G Ninja "$@" > /dev/null
  cmake --build "$folder" ${targets[@]:+--target "${targets[@]}"} -- --quiet
}
