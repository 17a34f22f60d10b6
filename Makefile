# What a newcomer types. Each target installs what is missing, builds, and does
# its job; a second call starts at once.

BUILD := build
PROGRAM := $(BUILD)/bin/korvane
EXAMPLE := examples/loan.xlsx

.PHONY: help build run test oxt deb check-deb bench sweep fuzz random-user asan clang-build format tidy example clean

help:
	@echo "make run          explore a cell of the sample workbook through LibreOffice Calc"
	@echo "make test         build everything and run the test suite"
	@echo "make build        build the program only: $(PROGRAM)"
	@echo "make oxt          make the extension for LibreOffice: $(BUILD)/korvane.oxt"
	@echo "make deb          make the Debian package; make check-deb: use it on a new system (as root)"
	@echo "make bench        run the benchmarks"
	@echo "make sweep        explore every formula of a folder of workbooks (CORPUS=folder)"
	@echo "make fuzz         fuzz for ten minutes per fuzzer (FUZZ_SECONDS=n for another time)"
	@echo "make random-user  let someone do anything with Calc and the add-in (RUNS=n, ACTIONS=n)"
	@echo "make asan         run the tests under AddressSanitizer and UndefinedBehaviorSanitizer"
	@echo "make clang-build  build with the second compiler"
	@echo "make tidy         run clang-tidy; make format: run clang-format"
	@echo "make example      make the sample workbook anew from its source"

# The preset's own build folder; configured once, then kept up to date by ninja.
$(BUILD)/build.ninja: | setup-run
	@cmake --preset release >/dev/null

.PHONY: setup-run setup-test setup-dev
setup-run setup-test setup-dev:
	@tools/setup.sh $(@:setup-%=%)

build: setup-run $(BUILD)/build.ninja
	@[ -e $(PROGRAM) ] || echo "Building: this takes some minutes the first time."
	@cmake --build $(BUILD) --target korvane_all -- --quiet

run: build
	@$(PROGRAM) explore $(EXAMPLE) 'Loan!B9' 'Loan!B11'

test: setup-test $(BUILD)/build.ninja
	@[ -e $(BUILD)/bin/run_inside_office ] || echo "Building: this takes some minutes the first time."
	@cmake --build $(BUILD) -- --quiet
	@cmake --preset fuzz >/dev/null && cmake --build build-fuzz --target fuzzers -- --quiet
	@ctest --test-dir $(BUILD) --output-on-failure --no-tests=error

oxt: build
	@tools/make_oxt.sh $(BUILD)

deb: setup-test build
	@cmake -E chdir $(BUILD) cpack -G DEB

check-deb: setup-test deb
	@tools/check_deb.sh $(BUILD)/korvane_*.deb

bench: setup-dev $(BUILD)/build.ninja
	@cmake --preset bench >/dev/null && cmake --build build-bench -- --quiet
	@tools/bench.sh build-bench
	@build-bench/bin/desk_bench
	@cmake --build $(BUILD) -- --quiet
	@tools/bench_calc.py $(BUILD) $(BENCH_WORKBOOK)

# Every workbook of a folder, in every mode (CORPUS=folder with workbooks/ in it).
CORPUS ?= ../shared/corpus
sweep: setup-dev $(BUILD)/build.ninja
	@cmake --build $(BUILD) -- --quiet
	@KORVANE_SWEEP=all KORVANE_CORPUS=$(abspath $(CORPUS)) $(BUILD)/bin/run_inside_office \
		$(BUILD)/lib/libcalc_inside_test.so '--gtest_filter=Corpus*'
	@tools/sweep.py $(PROGRAM) $(CORPUS)/workbooks

FUZZ_SECONDS ?= 600
fuzz: setup-test
	@cmake --preset fuzz >/dev/null && cmake --build build-fuzz --target fuzzers -- --quiet
	@tools/fuzz.sh build-fuzz $(FUZZ_SECONDS)

# Each run begins anew; one that fails says how it is had again.
RUNS ?= 3
ACTIONS ?= 500
random-user: setup-test $(BUILD)/build.ninja
	@cmake --build $(BUILD) -- --quiet
	@KORVANE_SEED=$${KORVANE_SEED:-0} KORVANE_ACTIONS=$(ACTIONS) $(BUILD)/bin/apps_desk_test '--gtest_filter=RandomUser*' \
		--gtest_repeat=$(RUNS)

asan: setup-test
	@cmake --preset asan >/dev/null && cmake --build build-asan -- --quiet
	@ctest --test-dir build-asan --output-on-failure --no-tests=error

clang-build: setup-test
	@cmake --preset clang >/dev/null && cmake --build build-clang -- --quiet

format: setup-dev
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

tidy: setup-dev $(BUILD)/build.ninja
	@cmake --build $(BUILD) -- --quiet
	@git ls-files 'src/*.cpp' | xargs -P 2 -n 4 clang-tidy --quiet -p $(BUILD)

example: setup-run
	@tools/make_example.sh

clean:
	rm -rf build build-*/
