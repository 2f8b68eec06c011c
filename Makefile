# make run   - install what is missing, build, start the tuner
# make test  - install what is missing, build, run every test
#              (in CI also under AddressSanitizer/UBSan and ThreadSanitizer,
#              and a minute of fuzzing for each fuzz target)
# make fuzz  - the fuzz targets (tests/fuzz) under libFuzzer, FUZZ_SECONDS each
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

.PHONY: run test build deb deps sanitize fuzz clean test-arm64 translations

run: build
	./$(BUILD)/bin/veltra

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)
ifneq ($(CI),)
	$(MAKE) sanitize
	$(MAKE) fuzz
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

# Each fuzz target under libFuzzer with AddressSanitizer and UBSan, from its
# seed corpus, for FUZZ_SECONDS. What it learns stays in $(BUILD)-fuzz/corpus
# for the next run; an input that crashes is saved there as crash-TARGET-*,
# to be added to tests/fuzz/regressions/TARGET once fixed.
FUZZ_SECONDS ?= 60
FUZZ_TARGETS := audio-file sound-model preference-file options scala
fuzz: build
	cmake -S . -B $(BUILD)-fuzz $(LIBPD) -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
	  -DVELTRA_SANITIZE=address -DVELTRA_FUZZ=ON -DVELTRA_BUILD_APP=OFF
	cmake --build $(BUILD)-fuzz -j $(JOBS) --target fuzz_targets
	set -e; for t in $(FUZZ_TARGETS); do \
	  mkdir -p $(BUILD)-fuzz/corpus/$$t; log=$(BUILD)-fuzz/fuzz-$$t.log; \
	  echo "fuzzing $$t for $(FUZZ_SECONDS) s"; \
	  if ! $(BUILD)-fuzz/fuzz/fuzz_$$t -max_total_time=$(FUZZ_SECONDS) -timeout=10 -rss_limit_mb=2048 \
	      -print_final_stats=1 -artifact_prefix=$(BUILD)-fuzz/crash-$$t- \
	      $(BUILD)-fuzz/corpus/$$t tests/fuzz/corpus/$$t >$$log 2>&1; then \
	    tail -n 60 $$log; exit 1; \
	  fi; \
	  grep -E '^(Done|stat::number_of_executed_units|stat::peak_rss_mb)' $$log; \
	done

clean:
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-tsan $(BUILD)-fuzz build-arm64
