# Two commands matter: `make run` and `make test`. Both install what is missing
# first (scripts/setup), so they work on a fresh Debian 12 machine.
SHELL := /bin/bash
.DEFAULT_GOAL := run

SANITIZE ?= 0
JOBS ?= $(shell nproc)
FUZZ_SECONDS ?= 60
# Fuzzing runs briefly: a lighter optimisation and line tables only build in
# three quarters of the time, and still name the line of every crash.
FUZZ_OPTIMISE := -O1 -gline-tables-only -DNDEBUG
# Both configurations keep their Ruffle captures in one folder: the movies are
# the same bytes, so the sanitizer run after a release run plays nothing again.
PLAYBACK_FLAGS := -DVIMBO_PLAYBACK_WORK_DIR=$(CURDIR)/build/playback
ifeq ($(SANITIZE),1)
  BUILD_DIR := build/asan
  CMAKE_FLAGS := -DCMAKE_BUILD_TYPE=Debug -DVIMBO_SANITIZE=ON $(PLAYBACK_FLAGS)
else
  BUILD_DIR := build/release
  CMAKE_FLAGS := -DCMAKE_BUILD_TYPE=Release $(PLAYBACK_FLAGS)
endif
VIMBO := $(BUILD_DIR)/src/vimbo

.PHONY: setup configure build run test bench fuzz install format clean screenshots

setup:
	@scripts/setup

configure: setup
	@cmake -S . -B $(BUILD_DIR) -G Ninja $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run-vimbo $(VIMBO)

test: build
	@cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS) --timeout 900

bench: setup
	@cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DVIMBO_APP=OFF >/dev/null
	@cmake --build build/bench -j $(JOBS)
	@for b in build/bench/bench/bench_*; do [ -x "$$b" ] && "$$b" || exit 1; done

fuzz: setup
	@CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=$(FUZZ_OPTIMISE)" \
	    -DVIMBO_FUZZ=ON -DVIMBO_APP=OFF -DVIMBO_BENCH=OFF >/dev/null
	@cmake --build build/fuzz -j $(JOBS) --target fuzzers
	@scripts/run-fuzzers build/fuzz/fuzz $(FUZZ_SECONDS)

# The editor's pictures in docs/screenshots: the new document, one example
# per effect and the object dialog per kind of object, drawn without a
# screen, the same every time.
screenshots: build
	@QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/src/app/vimbo-screenshots examples docs/screenshots

install: build
	@cmake --install $(BUILD_DIR)

format:
	@git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	@rm -rf build out
