# Entry points for a fresh Debian machine: `make run` and `make test`.
# Everything else (configure, build) happens through the CMake presets.

PRESETS := release asan
BUILD_RELEASE := build/release
DDBTOOL := $(BUILD_RELEASE)/tools/ddbtool

# make fuzz: every fuzz harness for FUZZ_SECONDS each (FUZZ_JOBS at once, FUZZ_TARGETS to pick
# some); new inputs and crashes go to build/fuzz/findings, never to the committed corpora.
FUZZ_SECONDS ?= 60
FUZZ_JOBS ?= 1
FUZZ_TIMEOUT ?= 30
FUZZ_TARGETS ?=

.PHONY: all deps configure build build-asan build-fuzz test test-release test-asan test-fuzz fuzz run bench install clean

all: build

deps:
	@./tools/install-deps.sh

$(BUILD_RELEASE)/build.ninja: deps
	cmake --preset release

build/asan/build.ninja: deps
	cmake --preset asan

configure: deps
	cmake --preset release
	cmake --preset asan
	cmake --preset fuzz

build: deps
	cmake --preset release
	cmake --build --preset release

build-asan: deps
	cmake --preset asan
	cmake --build --preset asan

test-release: build
	ctest --preset release

test-asan: build-asan
	ctest --preset asan

build-fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz

# Each harness about 20 seconds over its committed corpus, from no earlier findings.
test-fuzz: build-fuzz
	fuzz/run.sh --build build/fuzz --seconds 20 --jobs 2 --scratch build/fuzz/test-findings --fresh

# Both builds, every test, then a short pass of every fuzz harness; a sanitizer report or a
# fuzz finding fails the run.
test: test-release test-asan test-fuzz

fuzz: build-fuzz
	fuzz/run.sh --build build/fuzz --seconds $(FUZZ_SECONDS) --jobs $(FUZZ_JOBS) --timeout $(FUZZ_TIMEOUT) \
	    --scratch build/fuzz/findings $(FUZZ_TARGETS)

run: build
	@echo "== The bundled installation: $(CURDIR)/$(BUILD_RELEASE)/velcora"
	@echo "== The Tcl package ::velcora::device at the tclsh prompt (tcl/demo.tcl):"
	@echo
	@TCLLIBPATH=$(CURDIR)/$(BUILD_RELEASE)/ddb VELCORA_ROOTDIR=$(CURDIR)/$(BUILD_RELEASE)/velcora tclsh tcl/demo.tcl

bench: build
	@for b in $(BUILD_RELEASE)/bench/bench_*; do [ -x "$$b" ] && VELCORA_ROOTDIR=$(CURDIR)/$(BUILD_RELEASE)/velcora "$$b"; done

install: build
	cmake --install $(BUILD_RELEASE) $(if $(PREFIX),--prefix $(PREFIX),)

clean:
	rm -rf build
