#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing need,
# only those missing, without questions. Needs root (or sudo) when
# something is missing. With --classifier, also what building the sound
# classifier's corpus and training its head need (tools/classifier/,
# docs/classifier.md).
# With --arm64, also what cross-building for arm64 and running its tests
# under qemu-user need (make deb ARCH=arm64, make test-arm64).
set -euo pipefail

packages=(
  # toolchain and build
  build-essential cmake pkg-config dpkg-dev
  # libraries
  librtaudio-dev libpulse-dev libasound2-dev libsndfile1-dev libeigen3-dev
  qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools
  # the app's Qt Quick modules and platform plugins
  qml6-module-qtqml qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-templates
  qml6-module-qtquick-layouts qml6-module-qtquick-window qml6-module-qtqml-workerscript
  qml6-module-qttest qt6-qpa-plugins fonts-dejavu-core libqt6svg6
  # the file chooser, and the folder list model of the one Qt draws itself
  qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel
  # the translations: lupdate and lrelease, Qt's own texts in each language,
  # and fonts for the Japanese and Chinese screens (tests and screenshots):
  # one with a bold face for the titles, and one without, which the screens
  # must also carry
  qt6-l10n-tools qt6-translations-l10n fonts-noto-cjk fonts-wqy-microhei
  # native Wayland: Qt's platform plugin, and the client library the app asks
  # a compositor with before Qt starts; a headless compositor for the tests
  qt6-wayland libwayland-dev weston
  # the Wayland end-to-end test captures the X screen and compares pictures
  imagemagick
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev fluidsynth timgm6mb-soundfont alsa-utils
  # bench/patch-instructions.sh counts instructions with callgrind
  valgrind
  # packaging and its checks
  desktop-file-utils appstream lintian man-db
  # the virtual microphone and virtual screen that tests and bench/app-cpu.sh use,
  # on the classic PulseAudio daemon and on PipeWire with its PulseAudio layer
  pulseaudio pulseaudio-utils sox xvfb xauth libgl1-mesa-dri
  pipewire pipewire-pulse wireplumber
  # the end-to-end test reads the window back through the accessibility bus
  dbus at-spi2-core python3-pyatspi
  # bench/long-run.sh measures peak memory with it
  time
  # the fuzz targets (make fuzz): clang with libFuzzer and the sanitizers' runtime
  clang libclang-rt-14-dev
)
if [[ "${1:-}" == --classifier ]]; then
  packages+=(
    python3-torch python3-numpy python3-scipy python3-soundfile espeak-ng
    # recorded voices that the corpus hears as speech
    festival festvox-kallpc16k festvox-us-slt-hts festvox-italp16k festvox-itapc16k
    # General MIDI soundfonts whose notes the corpus renders
    fluidsynth fluid-soundfont-gm musescore-general-soundfont-small timgm6mb-soundfont
  )
  # A Node.js that brings its own npm conflicts with Debian's npm package.
  command -v npm >/dev/null || packages+=(npm)
fi
if [[ "${1:-}" == --arm64 ]]; then
  packages+=(crossbuild-essential-arm64 qemu-user-static)
  # The arm64 halves of the libraries the build links, beside the amd64 ones.
  for p in librtaudio-dev libpulse-dev libasound2-dev libsndfile1-dev libwayland-dev \
           qt6-base-dev qt6-declarative-dev libgtest-dev libgmock-dev libbenchmark-dev; do
    packages+=("$p:arm64")
  done
fi

missing=()
for p in "${packages[@]}"; do
  # One line per architecture the package is known in (arm64 beside amd64).
  dpkg-query -W -f='${Status}\n' "$p" 2>/dev/null | grep -qx "install ok installed" || missing+=("$p")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
sudo=()
if [[ $(id -u) -ne 0 ]]; then
  command -v sudo >/dev/null || { echo "install-deps: run as root to install: ${missing[*]}" >&2; exit 1; }
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
if [[ "${1:-}" == --arm64 ]] && ! dpkg --print-foreign-architectures | grep -qx arm64; then
  "${sudo[@]}" dpkg --add-architecture arm64
fi
"${sudo[@]}" apt-get update -q
"${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
