# make demo   installs what is missing, builds, and runs the main job on examples/site
# make test   installs what is missing, builds, and runs every test
PRESET ?= default
BUILD  := build/$(PRESET)
TQSTD  := $(BUILD)/hosts/tqstd
SITE   := examples/site
WERROR := $(if $(filter true,$(CI)),ON,OFF)

.PHONY: deps configure build demo test asan bench fuzz clean
FUZZ_SECONDS ?= 60

deps:
	@./deps/install.sh

configure: deps
	cmake --preset $(PRESET) -DTQ_WERROR=$(WERROR)

build: configure
	cmake --build --preset $(PRESET)

demo: build
	$(TQSTD) --ini $(SITE)/Velum.ini settings

test: build
	ctest --preset $(PRESET)

asan:
	$(MAKE) test PRESET=asan

fuzz: deps
	cmake --preset fuzz -DTQ_WERROR=$(WERROR)
	cmake --build --preset fuzz --target dxf_reader_fuzz
	./fuzz/run.sh $(FUZZ_SECONDS)

bench:
	$(MAKE) build PRESET=release
	./bench/run.sh build/release
	./bench/run_frames.sh build/release

clean:
	rm -rf build
