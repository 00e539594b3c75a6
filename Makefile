# The two set-up commands of a fresh Debian machine: `make demo` and `make test`.
SHELL := /bin/bash
JOBS ?= $(shell nproc)

# Debian packages the build, the tests and the demo need.
# chmcmd (fp-utils) stays usable as an outside compiler and is what the compiler's tests and
# benchmark compare against; 7z, extract_chmLib and libmspack open the books in the tests, and
# libmspack's and chmlib's LZX decoders read back what the compiler compresses; python3-chm
# searches the books' full-text index; xmllint checks the catalogues Quillmere writes.
# FreeImage makes the picture copies; ImageMagick draws the tests' pictures and reads the
# copies back; vipsthumbnail is what the picture benchmark measures the copies against.
PACKAGES := cmake ninja-build g++ pkg-config qt6-base-dev libicu-dev libgtest-dev \
            libbenchmark-dev fp-utils libchm-bin p7zip-full libxml2-utils libmspack-dev \
            libchm-dev python3-chm libfreeimage-dev imagemagick libvips-tools clang-format

BUILD := build
SANITIZED := build-sanitize
QUILLMERE := $(BUILD)/src/cli/quillmere
DEMO := $(BUILD)/demo

.PHONY: all deps build build-sanitized test test-plain test-sanitized demo bench clean format-check

all: build

deps:
	@scripts/ensure-packages.sh $(PACKAGES)

build: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

build-sanitized: deps
	@cmake -S . -B $(SANITIZED) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQMR_SANITIZE=ON >/dev/null
	@cmake --build $(SANITIZED) -j $(JOBS)

test-plain: build
	@cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

test-sanitized: build-sanitized
	@cd $(SANITIZED) && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
	    ctest --output-on-failure -j $(JOBS)

# Every test, plainly and under AddressSanitizer and UndefinedBehaviorSanitizer.
test: test-plain test-sanitized

# Builds the e-book of the bundled example scrapbook. It works on a copy, so the example stays
# as it is; the last line names the compiled .chm.
demo: build
	@rm -rf $(DEMO) && mkdir -p $(DEMO)/home && cp -r examples/sample-scrapbook $(DEMO)/
	@$(QUILLMERE) --home $(DEMO)/home ebook $(DEMO)/sample-scrapbook --no-view

bench: build
	@$(BUILD)/bench/catalogue_bench

# Every C++ file as the project's .clang-format writes it.
format-check: deps
	@scripts/check-format.sh

clean:
	rm -rf $(BUILD) $(SANITIZED)
