# Sourced by play and check: what the build needs, and the build itself.

# What the program, the tools and the sample game are built and run with.
product_packages=(
  build-essential cmake ninja-build pkg-config
  libsdl2-dev libpixman-1-dev libpng-dev libcli11-dev
  libfreetype-dev libfontconfig-dev libspeechd-dev nlohmann-json3-dev libpugixml-dev
  libimagequant-dev libsndfile1-dev libsamplerate0-dev libarchive-dev
  librsvg2-bin
)
test_packages=(
  libgtest-dev libgmock-dev
  icoutils procps xvfb xauth
  libavformat-dev libavcodec-dev libavutil-dev # judge of the movies' decoder
  python3-sphinx python3-myst-parser furo # the site, whose build judges the links of the pages
)

# install_missing PACKAGE...: those that are missing.
install_missing() {
  command -v apt-get >/dev/null || return 0
  local package missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local root=()
  [ "$(id -u)" -eq 0 ] || root=(sudo)
  echo "Installing: ${missing[*]}"
  "${root[@]}" apt-get update -qq
  "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
    --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET [TARGET...]: without targets everything. Tests (TESTS, as ZORBET_TESTS) are configured when
# everything is wanted, and stay configured, so that play and check share one build. SAMPLE is a build folder
# whose sample game is used (ZORBET_SAMPLE).
build() {
  local preset=$1
  shift
  if [ $# -eq 0 ]; then
    cmake --preset "$preset" -DZORBET_TESTS="${TESTS:-ON}" -DZORBET_SAMPLE="${SAMPLE:-}" >/dev/null
  elif [ ! -e "build/$preset/CMakeCache.txt" ]; then
    cmake --preset "$preset" -DZORBET_TESTS=OFF >/dev/null
  fi
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
