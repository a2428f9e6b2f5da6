# Front door of the build: no flags needed. Every target installs missing Debian packages first.
BUILD      ?= build
SAN_BUILD  ?= build-sanitize
BENCH_BUILD?= build-bench
FUZZ_BUILD ?= build-fuzz
PREFIX     ?= /usr/local
JOBS       ?= $(shell nproc)
FUZZ_SECONDS ?= 60
# Extra seed folders for the fuzzers: the shared fuzz seeds when they are there.
FUZZ_CORPUS ?= $(wildcard ../shared/corpus/fuzz-seeds/go-fuzz-corpus-xml ../shared/corpus/fuzz-seeds/pugixml-fuzz-parse)
FUZZ_DICT ?= $(wildcard ../shared/corpus/fuzz-seeds/libxml2/xml.dict)

CMAKE_GEN = -G Ninja

INSTALL_BUILD ?= build-install

.PHONY: all deps build demo test sanitize bench fuzz install format format-check consumer-check docs clean

all: build

deps:
	@scripts/install-deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

# The demo builds only the example programs and what they link.
demo: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS) --target write_document settings_state
	$(BUILD)/examples/write_document
	$(BUILD)/examples/settings_state

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

sanitize: deps
	cmake -S . -B $(SAN_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Debug -DTAVO_SANITIZE=ON \
	    -DTAVO_BUILD_EXAMPLES=OFF -DTAVO_BUILD_TOOLS=OFF
	cmake --build $(SAN_BUILD) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:abort_on_error=1 \
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir $(SAN_BUILD) --output-on-failure -j $(JOBS)

bench: deps
	cmake -S . -B $(BENCH_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=Release -DTAVO_BUILD_BENCH=ON \
	    -DTAVO_BUILD_TESTS=OFF -DTAVO_BUILD_EXAMPLES=OFF -DTAVO_BUILD_TOOLS=OFF
	cmake --build $(BENCH_BUILD) -j $(JOBS)
	@failed=; for b in $(BENCH_BUILD)/bench/bench_*; do echo "== $$b"; $$b || failed="$$failed $$(basename $$b)"; done; \
	    if [ -n "$$failed" ]; then echo "benchmarks that missed a bound:$$failed"; exit 1; fi

fuzz:
	@WITH_CLANG=1 scripts/install-deps.sh
	CXX=clang++ cmake -S . -B $(FUZZ_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DTAVO_BUILD_FUZZ=ON -DTAVO_BUILD_TESTS=OFF -DTAVO_BUILD_EXAMPLES=OFF -DTAVO_BUILD_TOOLS=OFF
	cmake --build $(FUZZ_BUILD) -j $(JOBS)
	@for f in $(FUZZ_BUILD)/fuzz/fuzz_*; do \
	    name=$$(basename $$f); mkdir -p fuzz/corpus-run/$$name; \
	    echo "== $$name for $(FUZZ_SECONDS)s"; \
	    seeds=fuzz/seeds/$$name; [ -d $$seeds ] || seeds=; \
	    $$f -max_total_time=$(FUZZ_SECONDS) -rss_limit_mb=4096 -timeout=60 $(if $(FUZZ_DICT),-dict=$(FUZZ_DICT)) \
	        fuzz/corpus-run/$$name $$seeds $(FUZZ_CORPUS) || exit 1; \
	done

# Installs the libraries, the public headers, the tools and the package files; no tests are built.
install: deps
	cmake -S . -B $(INSTALL_BUILD) $(CMAKE_GEN) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVO_BUILD_TESTS=OFF \
	    -DTAVO_BUILD_EXAMPLES=OFF
	cmake --build $(INSTALL_BUILD) -j $(JOBS)
	cmake --install $(INSTALL_BUILD) --prefix $(PREFIX)

# Installs into a temporary prefix and builds clients against it, with CMake and with pkg-config.
consumer-check: build
	scripts/check-consumer.sh $(BUILD)

SOURCES = git ls-files --cached --others --exclude-standard '*.cpp' '*.hpp' | sort -u | \
	    while read -r f; do [ -f "$$f" ] && echo "$$f"; done

# The HTML API reference of the public headers (build-docs/html/index.html).
docs: deps
	scripts/make-docs.sh

format:
	@$(SOURCES) | xargs -r clang-format -i

format-check: deps
	@$(SOURCES) | xargs -r clang-format --dry-run -Werror
	@echo "formatting ok"

clean:
	rm -rf $(BUILD) $(SAN_BUILD) $(BENCH_BUILD) $(FUZZ_BUILD) $(INSTALL_BUILD) build-docs
