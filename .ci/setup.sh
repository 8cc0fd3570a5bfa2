# Sourced by play and check: what the build needs, and the build itself.

packages=(
  build-essential cmake ninja-build pkg-config
  libsdl2-dev libpixman-1-dev libpng-dev libcli11-dev
  libfreetype-dev libfontconfig-dev
  libavformat-dev libavcodec-dev libavutil-dev
  libimagequant-dev librsvg2-bin
  libsndfile1-dev libsamplerate0-dev
  libgtest-dev libgmock-dev
  icoutils procps xvfb xauth
)

install_missing() {
  command -v apt-get >/dev/null || return 0
  local package missing=()
  for package in "${packages[@]}"; do
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

# build PRESET
build() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}

install_missing
