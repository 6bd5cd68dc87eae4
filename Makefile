# The two commands a new user runs: `make demo` and `make check`.
BUILD      ?= build
SAN_BUILD  ?= build-sanitize
THREAD_BUILD ?= build-thread
BENCH_BUILD ?= build-release
JOBS       ?= $(shell nproc)
GENERATOR  := $(shell command -v ninja >/dev/null 2>&1 && echo Ninja || echo "Unix Makefiles")

.PHONY: all deps build demo test check check-sanitize check-thread bench install format clean

all: build

deps:
	@scripts/install-deps

BUILD_BENCHMARKS ?= OFF

build: deps
	@cmake -S . -B $(BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCADREL_BUILD_BENCHMARKS=$(BUILD_BENCHMARKS) >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

DEMO_OUT   ?= demo-output

# Only the program: the demo needs neither the tests nor the benchmarks.
demo: deps
	@cmake -S . -B $(BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCADREL_BUILD_BENCHMARKS=OFF >/dev/null
	@cmake --build $(BUILD) -j $(JOBS) --target cadrel
	@$(BUILD)/bin/cadrel lipsync Demo/speech.wav --out $(DEMO_OUT)
	@echo "The animation is in $(DEMO_OUT)/: speech.json (the lipsync answer), speech.csv (one row per frame), speech.svg (the curves)."
	@echo "Open $(DEMO_OUT)/speech.html in a browser and press Play: the face speaks with the sound."

# The benchmarks are built too, though not run, so that a change cannot break them unseen.
test: BUILD_BENCHMARKS = ON
test: build
	@ctest --test-dir $(BUILD) -j $(JOBS) --output-on-failure

# Every test twice: a plain build, then clang with AddressSanitizer and
# UndefinedBehaviorSanitizer, which also runs each fuzzer for a few seconds; the
# HTTP and transport tests a third time under ThreadSanitizer.
check: test check-sanitize check-thread

check-sanitize: deps
	@CXX=clang++ cmake -S . -B $(SAN_BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=Debug \
		-DCADREL_SANITIZE=address,undefined -DCADREL_BUILD_FUZZERS=ON -DCADREL_BUILD_BENCHMARKS=OFF >/dev/null
	@cmake --build $(SAN_BUILD) -j $(JOBS)
	@ctest --test-dir $(SAN_BUILD) -j $(JOBS) --output-on-failure

# Only the programs whose code crosses threads: the HTTP module's worker, the
# transport on top of it, the cadrel program with its in-process server, the
# server's stop and its live link's sender thread, and the live receiver with its page server.
check-thread: deps
	@CXX=clang++ cmake -S . -B $(THREAD_BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
		-DCADREL_SANITIZE=thread -DCADREL_BUILD_BENCHMARKS=OFF >/dev/null
	@cmake --build $(THREAD_BUILD) -j $(JOBS) --target $$(cmake --build $(THREAD_BUILD) --target help \
		| grep -owE 'OrvaneHttpTests|CadrelTransportTests|CadrelProgramTests|CadrelViewTests|LipsyncServerTests' | sort -u)
	@TSAN_OPTIONS="suppressions=$(CURDIR)/Tests/tsan.supp $$TSAN_OPTIONS" \
		ctest --test-dir $(THREAD_BUILD) -R '^(Http|Transport|FProgramTest|FVelkReceiverTest|ViewPageServerTest|FVelkLinkTest|VelkLinkProgram|FServerFixture.StopLets)' -j $(JOBS) --output-on-failure

bench: deps
	@cmake -S . -B $(BENCH_BUILD) -G "$(GENERATOR)" -DCMAKE_BUILD_TYPE=Release -DCADREL_BUILD_TESTS=OFF >/dev/null
	@cmake --build $(BENCH_BUILD) -j $(JOBS)
	@for b in $(BENCH_BUILD)/bin/*Benchmark; do echo "== $$b"; $$b --benchmark_counters_tabular=true; done

install: build
	@cmake --install $(BUILD) --prefix $(or $(PREFIX),/usr/local)

format:
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	@rm -rf $(BUILD) $(SAN_BUILD) $(THREAD_BUILD) $(BENCH_BUILD)
