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
	@$(DDBTOOL) pack --level 9 data/samples/sample.hdr $(BUILD_RELEASE)/sample_hdr.ddb
	@echo "== Read back through the archive (ddbtool cat):"
	@$(DDBTOOL) cat $(BUILD_RELEASE)/sample_hdr.ddb

bench: build
	@for b in $(BUILD_RELEASE)/bench/bench_*; do [ -x "$$b" ] && "$$b"; done

install: build
	cmake --install $(BUILD_RELEASE) $(if $(PREFIX),--prefix $(PREFIX),)

clean:
	rm -rf build
