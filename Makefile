# make run   - install what is missing, build, start the tuner
# make test  - install what is missing, build, run every test
#              (in CI also under AddressSanitizer/UBSan and ThreadSanitizer)
# make deb   - the same build, then a Debian package in build/
BUILD ?= build
JOBS ?= $(shell nproc)
# CI builds treat warnings as errors.
WERROR := $(if $(CI),ON,OFF)
# Sanitizer builds reuse the libpd built for the main build.
LIBPD := -DVELTRA_LIBPD_DIR=$(abspath $(BUILD))/_deps/libpd

.PHONY: run test build deb deps sanitize clean

run: build
	./$(BUILD)/bin/veltra

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)
ifneq ($(CI),)
	$(MAKE) sanitize
endif

build: deps
	cmake -S . -B $(BUILD) -DVELTRA_WERROR=$(WERROR)
	cmake --build $(BUILD) -j $(JOBS)

deb: build
	cd $(BUILD) && cpack -G DEB

deps:
	@bash tools/install-deps.sh

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
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-tsan
