# make run   - install what is missing, build, start the tuner
# make test  - install what is missing, build, run every test
#              (in CI also under AddressSanitizer/UBSan and ThreadSanitizer)
# make deb   - the same build, then a Debian package in build/
# make translations - refresh translations/*.ts from the sources (lupdate)
# make deb ARCH=arm64 - cross-built for 64-bit ARM phones: build-arm64/veltra_VERSION_arm64.deb
# make test-arm64     - the engine, logic and command-line tests of that build, under qemu-user
ARCH ?=
ifeq ($(ARCH),arm64)
BUILD ?= build-arm64
CROSS := -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake
DEPS_FLAGS := --arm64
else ifneq ($(ARCH),)
$(error ARCH may be arm64, or left out for this machine's own)
endif
BUILD ?= build
JOBS ?= $(shell nproc)
# CI builds treat warnings as errors.
WERROR := $(if $(CI),ON,OFF)
# Sanitizer builds reuse the libpd built for the main build.
LIBPD := -DVELTRA_LIBPD_DIR=$(abspath $(BUILD))/_deps/libpd

.PHONY: run test build deb deps sanitize clean test-arm64 translations

run: build
	./$(BUILD)/bin/veltra

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)
ifneq ($(CI),)
	$(MAKE) sanitize
endif

build: deps
	cmake -S . -B $(BUILD) -DVELTRA_WERROR=$(WERROR) $(CROSS)
	cmake --build $(BUILD) -j $(JOBS)

deb: build
	cd $(BUILD) && cpack -G DEB

deps:
	@bash tools/install-deps.sh $(DEPS_FLAGS)

# New texts of the screens into every translations/veltra_<language>.ts,
# marked unfinished for the translator; texts gone from the sources leave.
translations: deps
	cmake -S . -B $(BUILD) -DVELTRA_WERROR=$(WERROR) $(CROSS)
	cmake --build $(BUILD) --target translations

# Every test that needs neither a window nor the installed package, each
# test program run by qemu-user (ctest knows it from the toolchain file);
# then the same recording through both builds' veltra-cli, which must agree
# byte for byte. The end-to-end scripts start the programs themselves, so
# they stay with this machine's build.
ARM64_WINDOW_TESTS := ^(Screens|RendererChoice|TriangleCanvas|dpr[0-9]|Languages/Desktop)\.|^Screen\.OpenGL|^qmllint|^Tuner(Hears|Runs)|^ListeningSurvives|^package_
test-arm64: build
	$(MAKE) build ARCH=arm64
	ctest --test-dir build-arm64 --output-on-failure -j $(JOBS) -E '$(ARM64_WINDOW_TESTS)'
	tests/cli/same-on-arm64.sh $(BUILD)/bin/veltra-cli build-arm64/bin/veltra-cli

# The engine and logic under AddressSanitizer and UndefinedBehaviorSanitizer,
# and the audio hand-over under ThreadSanitizer. The window is left out.
sanitize: build
	cmake -S . -B $(BUILD)-asan $(LIBPD) -DVELTRA_SANITIZE=address -DVELTRA_BUILD_APP=OFF
	cmake --build $(BUILD)-asan -j $(JOBS)
	ctest --test-dir $(BUILD)-asan --output-on-failure -j $(JOBS)
	cmake -S . -B $(BUILD)-tsan $(LIBPD) -DVELTRA_SANITIZE=thread -DVELTRA_BUILD_APP=OFF
	cmake --build $(BUILD)-tsan -j $(JOBS) --target dsp_tests
	$(BUILD)-tsan/tests/dsp_tests --gtest_filter='AudioController.*'

clean:
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-tsan build-arm64
