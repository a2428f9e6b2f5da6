# Front door of the build: no flags needed. Every target installs missing Debian packages first.
BUILD      ?= build
SAN_BUILD  ?= build-sanitize
BENCH_BUILD?= build-bench
FUZZ_BUILD ?= build-fuzz
PREFIX     ?= /usr/local
JOBS       ?= $(shell nproc)
FUZZ_SECONDS ?= 60
# Extra seed folders for the fuzzers: the shared fuzz seeds when they are there.
FUZZ_CORPUS ?= $(wildcard ../shared/corpus/fuzz-seeds/go-fuzz-corpus-xml)

CMAKE_GEN = -G Ninja

.PHONY: all deps build demo test sanitize bench fuzz install format clean

all: build

deps:
	@scripts/install-deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

demo: build
	$(BUILD)/examples/write_document

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

sanitize: deps
	cmake -S . -B $(SAN_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Debug -DTAVO_SANITIZE=ON \
	    -DTAVO_BUILD_EXAMPLES=OFF
	cmake --build $(SAN_BUILD) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:abort_on_error=1 \
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir $(SAN_BUILD) --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B $(BENCH_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Release -DTAVO_BUILD_BENCH=ON \
	    -DTAVO_BUILD_TESTS=OFF -DTAVO_BUILD_EXAMPLES=OFF
	cmake --build $(BENCH_BUILD) -j $(JOBS)
	@for b in $(BENCH_BUILD)/bench/bench_*; do echo "== $$b"; $$b || exit 1; done

fuzz:
	@WITH_CLANG=1 scripts/install-deps.sh
	CXX=clang++ cmake -S . -B $(FUZZ_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DTAVO_BUILD_FUZZ=ON -DTAVO_BUILD_TESTS=OFF -DTAVO_BUILD_EXAMPLES=OFF
	cmake --build $(FUZZ_BUILD) -j $(JOBS)
	@for f in $(FUZZ_BUILD)/fuzz/fuzz_*; do \
	    name=$$(basename $$f); mkdir -p fuzz/corpus-run/$$name; \
	    echo "== $$name for $(FUZZ_SECONDS)s"; \
	    seeds=fuzz/seeds/$$name; [ -d $$seeds ] || seeds=; \
	    $$f -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=4096 -timeout=30 \
	        fuzz/corpus-run/$$name $$seeds $(FUZZ_CORPUS) || exit 1; \
	done

install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

format:
	@git ls-files --cached --others --exclude-standard '*.cpp' '*.hpp' | sort -u | \
	    while read -r f; do [ -f "$$f" ] && echo "$$f"; done | xargs -r clang-format -i

clean:
	rm -rf $(BUILD) $(SAN_BUILD) $(BENCH_BUILD) $(FUZZ_BUILD)
