# make run   - install what is missing, build, start the tuner
# make test  - install what is missing, build, run every test
BUILD ?= build
JOBS ?= $(shell nproc)
# CI builds treat warnings as errors.
WERROR := $(if $(CI),ON,OFF)

.PHONY: run test build deps clean

run: build
	./$(BUILD)/bin/veltra

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

build: deps
	cmake -S . -B $(BUILD) -DVELTRA_WERROR=$(WERROR)
	cmake --build $(BUILD) -j $(JOBS)

deps:
	@bash tools/install-deps.sh

clean:
	rm -rf $(BUILD)
