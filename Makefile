# The two commands of the README: `make demo` and `make test`. The rest serves development.
.PHONY: all native windows test demo dist fuzz fuzz-build tsan bench bench-wine clean deps firmware-size uno-demo

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

# Runs the program under Wine against the thermostat on a simulated Arduino Uno, on COM9.
uno-demo:
	@tools/demo uno

# A zip of the Windows programs and a short text on running them: build/tremolanth-windows.zip.
dist:
	@tools/dist

# Runs every fuzz target for FUZZ_SECONDS each (libFuzzer, clang), from the seed corpus.
FUZZ_SECONDS ?= 60
fuzz:
	@tools/install-deps fuzz
	CC=clang CXX=clang++ cmake -S . -B build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTREMOLANTH_FUZZ=ON
	cmake --build build/fuzz -j$(JOBS) --target fuzz_worker fuzz_record fuzz_updates fuzz_files fuzz_identity fuzz_chart \
		fuzz_arduino_reader
	@tools/run-fuzz build/fuzz $(FUZZ_SECONDS)

# The tests under ThreadSanitizer (the worker and the screen's thread on one store).
tsan: deps
	cmake -S . -B build/tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTREMOLANTH_TSAN=ON
	cmake --build build/tsan -j$(JOBS)
	cd build/tsan && TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" ctest --output-on-failure

# Speed and memory figures (Google Benchmark), optimised build without sanitizers.
bench: deps
	cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DTREMOLANTH_BENCH=ON
	cmake --build build/bench -j$(JOBS) --target link_bench chart_bench
	build/bench/bench/link_bench
	build/bench/bench/chart_bench

# The data views' speed in real windows under Wine: chart paints, table refill, CSV export.
bench-wine:
	@tools/wine-bench

# Flash and RAM of the microcontroller library's examples on an Uno, and of an empty sketch.
firmware-size:
	@tools/firmware-size

clean:
	rm -rf build
