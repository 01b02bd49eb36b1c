# The two commands of the README: `make demo` and `make test`. The rest serves development.
.PHONY: all native windows test demo fuzz fuzz-build tsan bench clean deps

JOBS ?= $(shell nproc 2>/dev/null || echo 2)
NATIVE := build/native
WINDOWS := build/windows

all: native windows

deps:
	@tools/install-deps

native: deps
	cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=Debug -DTREMOLANTH_SANITIZE=ON
	cmake --build $(NATIVE) -j$(JOBS)

windows: deps
	cmake -S . -B $(WINDOWS) -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release
	cmake --build $(WINDOWS) -j$(JOBS)

# Builds everything with warnings as errors and runs every test, natively and under Wine.
test:
	@tools/run-tests

# Runs the program under Wine against the demo device.
demo:
	@tools/demo

clean:
	rm -rf build
