# Entry points for a fresh Debian machine: `make run` and `make test`.
# Everything else (configure, build) happens through the CMake presets.

PRESETS := release asan
BUILD_RELEASE := build/release
DDBTOOL := $(BUILD_RELEASE)/tools/ddbtool

.PHONY: all deps configure build build-asan test test-release test-asan run bench install clean

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

# Both builds, every test; a sanitizer report aborts its test and fails the run.
test: test-release test-asan

run: build
	@echo "== The bundled installation: $(CURDIR)/$(BUILD_RELEASE)/velcora"
	@echo "== The Tcl package ::velcora::device at the tclsh prompt (tcl/demo.tcl):"
	@echo
	@TCLLIBPATH=$(CURDIR)/$(BUILD_RELEASE)/ddb VELCORA_ROOTDIR=$(CURDIR)/$(BUILD_RELEASE)/velcora tclsh tcl/demo.tcl

bench: build
	@for b in $(BUILD_RELEASE)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done

install: build
	cmake --install $(BUILD_RELEASE) $(if $(PREFIX),--prefix $(PREFIX),)

clean:
	rm -rf build
