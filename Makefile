# Galeris: the two commands a newcomer needs are `make run` and `make test`.
JOBS ?= $(shell nproc)
ifeq ($(SANITIZE),1)
  BUILD ?= build-asan
  CMAKE_FLAGS += -DCMAKE_BUILD_TYPE=Debug -DGALERIS_SANITIZE=ON
else
  BUILD ?= build
  CMAKE_FLAGS += -DCMAKE_BUILD_TYPE=RelWithDebInfo
endif
EXAMPLE ?= examples/example_mine.sim
# make fuzz: SECONDS per reader; corpora and finds go to FUZZ_OUT, outside the source tree.
SECONDS ?= 60
FUZZ_OUT ?= $(HOME)/.cache/galeris-fuzz

.PHONY: setup configure build test run bench fuzz clean

setup:
	@scripts/setup

configure: setup
	@cmake -S . -B $(BUILD) $(CMAKE_FLAGS) >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

run: build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then \
	  $(BUILD)/bin/galeris $(EXAMPLE); \
	else \
	  echo "No display found: running the command-line tool on $(EXAMPLE) instead."; \
	  $(BUILD)/bin/galeris-sim info $(EXAMPLE); \
	fi

bench: setup
	@cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release >/dev/null
	@cmake --build build-bench -j $(JOBS)
	@for b in build-bench/bin/bench_*; do $$b; done

fuzz:
	@scripts/setup fuzz
	@CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DGALERIS_FUZZ=ON >/dev/null
	@cmake --build build-fuzz -j $(JOBS)
	@scripts/fuzz build-fuzz/bin $(FUZZ_OUT) $(SECONDS)

clean:
	rm -rf build build-asan build-bench build-fuzz
