# What people type. Every target first sees to the packages it needs (scripts/bootstrap); with
# BOOTSTRAP= on the command line that step is left out.

BOOTSTRAP ?= scripts/bootstrap
JOBS ?= $(shell nproc)
PREFIX ?= /usr/local
# Thousands of customer invoices of the companies that are measured: "make bench BENCH_SCALES='10 100 1000'".
BENCH_SCALES ?= 10 100
# A server that is measured beside the files: "make bench BENCH_SERVER=postgresql://user@host/database".
BENCH_SERVER ?=
# How long each fuzz target runs.
FUZZ_SECONDS ?= 30
# Lint only what has changed since this revision; empty for everything.
SINCE ?=

QUORACC := build/release/bin/quoracc
DEMO := build/demo/company.db
WINDOWS_READY := $(if $(BOOTSTRAP),$(BOOTSTRAP) windows,command -v wine x86_64-w64-mingw32-g++-posix >/dev/null) && \
  scripts/fetch-sqlite
COM_BENCH := build/windows64/bin/quoracc_com_bench.exe

.DEFAULT_GOAL := help
.PHONY: help demo build test bench format lint clang sanitize threads fuzz install clean packages tools \
        idl windows wine

help: ## this list
	@sed -n 's/^\([a-z]*\):.*## /\1\t/p' $(MAKEFILE_LIST) | expand -t 12

demo: build ## build, make a sample company, print its aged receivables
	@mkdir -p $(dir $(DEMO))
	@test $(DEMO) -nt $(QUORACC) || $(QUORACC) company create $(DEMO) --sample --force
	$(QUORACC) aging customers --company $(DEMO)

build: packages build/release/build.ninja ## the release build: build/release/bin/quoracc
	@cmake --build --preset release -j $(JOBS) --target quoracc_product

test: packages build/release/build.ninja ## the release build with its tests, and run them; then make wine, where Wine can be had
	@cmake --build --preset release -j $(JOBS)
	@ctest --preset release -j $(JOBS)
	@if $(WINDOWS_READY); then $(MAKE) --no-print-directory BOOTSTRAP= wine; \
	else echo "The tests of the COM server are left out: Wine and a compiler for it are not to be had here."; fi

bench: packages build/release/build.ninja ## measure against the engine used by hand (BENCH_SCALES, BENCH_SERVER, BENCH_FILTER)
	@cmake --build --preset release -j $(JOBS) --target quoracc_bench
	@build/release/bin/quoracc_bench --companies=build/bench --scales="$(BENCH_SCALES)" \
	  $(if $(BENCH_SERVER),--server="$(BENCH_SERVER)") \
	  $(if $(BENCH_FILTER),--benchmark_filter="$(BENCH_FILTER)")
	@test ! -x $(COM_BENCH) || (cd $(dir $(COM_BENCH)) && \
	  $(CURDIR)/tests/com/run.sh $(CURDIR)/build/windows64/wine $(notdir $(COM_BENCH)))

format: tools ## lay out all sources
	@scripts/sources | xargs clang-format-19 -i

lint: tools build/clang/build.ninja build/windows-clang/build.ninja ## layout, layers, and clang-tidy (with Clang's warnings) over all sources (or SINCE=revision)
	@scripts/lint build/clang:build/windows-clang $(JOBS) $(SINCE)

clang: tools build/clang/build.ninja ## everything once more with Clang's warnings
	@cmake --build --preset clang -j $(JOBS)

sanitize: packages build/debug/build.ninja ## the tests under address and undefined-behaviour sanitizers
	@cmake --build --preset debug -j $(JOBS)
	@ctest --preset debug -j $(JOBS)

threads: packages build/threads/build.ninja ## the tests of hosts on several threads under the thread sanitizer
	@cmake --build --preset threads -j $(JOBS)
	@build/threads/bin/quoracc_threads_test

fuzz: tools build/fuzz/build.ninja ## run each fuzz target for FUZZ_SECONDS
	@cmake --build --preset fuzz -j $(JOBS)
	@scripts/fuzz build/fuzz $(FUZZ_SECONDS)

idl: packages build/release/build.ninja ## write the interface definitions (com/idl) off the member tables
	@cmake --build --preset release -j $(JOBS) --target quoracc_idl
	@for library in QuorAccQueries QuorDataLib; do \
	  build/release/bin/quoracc_idl $$library >com/idl/$$library.idl || exit 1; done

windows: build/windows64/build.ninja build/windows32/build.ninja ## the COM server for Windows, packed: build/windows
	@cmake --build --preset windows64 -j $(JOBS)
	@cmake --build --preset windows32 -j $(JOBS)
	@ctest --preset windows32
	@scripts/pack-windows build/windows

wine: build/windows64/build.ninja ## build the COM server and run its clients (Wine)
	@cmake --build --preset windows64 -j $(JOBS)
	@ctest --preset windows64

install: build ## install program, libraries, headers and CMake package under PREFIX
	@cmake --install build/release --prefix "$(PREFIX)"

clean: ## remove everything that was built
	rm -rf build

packages:
	@$(BOOTSTRAP)

tools:
	@$(if $(BOOTSTRAP),$(BOOTSTRAP) tools)

build/%/build.ninja: CMakePresets.json | packages
	@mkdir -p build && cmake --preset $* >build/$*.log 2>&1 || { cat build/$*.log >&2; exit 1; }
	@touch $@

build/fuzz/build.ninja build/clang/build.ninja: | tools

build/windows64/build.ninja build/windows32/build.ninja build/windows-clang/build.ninja: | windows-packages

.PHONY: windows-packages
windows-packages:
	@$(if $(BOOTSTRAP),$(BOOTSTRAP) windows)
	@scripts/fetch-sqlite
