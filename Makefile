# The two everyday commands are `make demo` and `make check`; both install
# what is missing first. `make bench` and `make fuzz` use build trees of their own.
BUILD        ?= build
BENCH_BUILD  ?= build-bench
FUZZ_BUILD   ?= build-fuzz
PACKAGE_BUILD ?= build-package
PREFIX       ?= /usr/local
FUZZ_SECONDS ?= 60
JOBS         ?= $(shell nproc)

# Lets every clone of the repository share one compiler cache.
export CCACHE_BASEDIR := $(CURDIR)
export CCACHE_NOHASHDIR := 1

.PHONY: all deps build check lint demo install package bench fuzz clean

all: build

deps:
	@scripts/install-deps

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug

build: deps $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS)

check: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

# The C++ files as .clang-format writes them, and every QML module clean under qmllint.
lint: deps $(BUILD)/build.ninja
	scripts/check-format
	cmake --build $(BUILD) --target all_qmllint

demo: build
	scripts/demo $(BUILD)

# Installs the build under PREFIX (DESTDIR for staging), then tells the
# desktop about the new entry when its tool is there.
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)
	-[ -n "$(DESTDIR)" ] || update-desktop-database -q $(PREFIX)/share/applications 2>/dev/null

# A .deb from a Release tree of its own, without the tests (GCC 12 warns
# falsely at -O3 inside Qt's headers, so warnings stay warnings there).
$(PACKAGE_BUILD)/build.ninja:
	cmake -S . -B $(PACKAGE_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release -DTARN_TESTS=OFF -DTARN_WERROR=OFF

package: deps $(PACKAGE_BUILD)/build.ninja
	cmake --build $(PACKAGE_BUILD) -j $(JOBS) --target package
	@ls $(PACKAGE_BUILD)/*.deb

$(BENCH_BUILD)/build.ninja:
	cmake -S . -B $(BENCH_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release -DTARN_BENCH=ON

bench: deps $(BENCH_BUILD)/build.ninja
	cmake --build $(BENCH_BUILD) -j $(JOBS)
	scripts/run-bench $(BENCH_BUILD)

$(FUZZ_BUILD)/build.ninja:
	CXX=clang++ cmake -S . -B $(FUZZ_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTARN_FUZZ=ON -DTARN_WERROR=OFF

fuzz: deps $(FUZZ_BUILD)/build.ninja
	cmake --build $(FUZZ_BUILD) -j $(JOBS)
	scripts/run-fuzz $(FUZZ_BUILD) $(FUZZ_SECONDS)

clean:
	rm -rf $(BUILD) $(BENCH_BUILD) $(FUZZ_BUILD) $(PACKAGE_BUILD)
