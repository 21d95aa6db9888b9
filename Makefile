# make demo   installs what is missing, builds, and runs the main job on examples/site
# make test   installs what is missing, builds, and runs every test
# make windows       cross-builds tqstd.exe and the tests for Windows; leaves dist/tqstd-windows-x86_64.zip
# make windows-test  runs the Windows unit and command-line tests and the release under Wine
PRESET ?= relwithdebinfo
BUILD  := build/$(PRESET)
TQSTD  := $(BUILD)/hosts/tqstd
SITE   := examples/site
WERROR := $(if $(filter true,$(CI)),ON,OFF)

.PHONY: deps configure build demo test asan tsan bench fuzz clean screenshots windows windows-test
FUZZ_SECONDS ?= 60

deps:
	@./deps/install.sh

configure: deps
	cmake --preset $(PRESET) -DTQ_WERROR=$(WERROR)

build: configure
	cmake --build --preset $(PRESET)

# The main job on a copy of the example installation (the takeoff remembers its choices
# there): the aggregate of every standard drawing with information, shown from CP932.
DEMO := build/demo
demo: build
	rm -rf $(DEMO) && mkdir -p $(DEMO) && cp -r $(SITE) $(DEMO)/site
	$(TQSTD) --ini $(DEMO)/site/Velum.ini check $(DEMO)/site/drawings/設備標準図.dxf
	$(TQSTD) --ini $(DEMO)/site/Velum.ini takeoff $(DEMO)/site/drawings/設備標準図.dxf --kind aggregate --separator comma -o $(DEMO)/集計.txt
	@echo "--- the first lines of $(DEMO)/集計.txt (CP932, shown in UTF-8) ---"
	@iconv -f CP932 -t UTF-8 $(DEMO)/集計.txt | head -12
	@echo "--- 拾い確認 scripted (examples/scripts/拾い確認_集計と登録.txt): the end of its transcript ---"
	cd $(DEMO) && $(abspath $(TQSTD)) --ini site/Velum.ini script site/drawings/設備標準図.dxf $(abspath examples/scripts/拾い確認_集計と登録.txt) | tail -9

test: build
	ctest --preset $(PRESET)

asan:
	$(MAKE) test PRESET=asan

# The unit tests under ThreadSanitizer: reads of one drawing from several threads among them.
tsan:
	$(MAKE) test PRESET=tsan

fuzz: deps
	cmake --preset fuzz -DTQ_WERROR=$(WERROR)
	cmake --build --preset fuzz --target dxf_reader_fuzz
	./fuzz/run.sh $(FUZZ_SECONDS)

bench:
	$(MAKE) build PRESET=release
	./bench/run.sh build/release
	./bench/run_dxf_info.sh build/release
	./bench/run_frames.sh build/release
	./bench/run_sizetable.sh build/release
	./bench/run_takeoff.sh build/release
	./bench/run_collect.sh build/release
	./bench/run_save.sh build/release
	./bench/run_script.sh build/release
	./bench/run_calc.sh build/release
	./bench/run_workbench.sh build/release

# The README's pictures (docs/images): the workbench under a virtual X server runs
# docs/screenshots.txt on a copy of the example installation and saves the window after every
# dialog, message box and dump; two of them are the README's.
SHOTS := build/screenshots
screenshots: build
	rm -rf $(SHOTS) && mkdir -p $(SHOTS) docs/images && cp -r $(SITE) $(SHOTS)/site
	cd $(SHOTS) && xvfb-run -a -s "-screen 0 1600x1000x24" $(abspath $(BUILD))/hosts/qt/tqstd-workbench --ini site/Velum.ini \
	  site/drawings/設備標準図.dxf --script $(abspath docs/screenshots.txt) --screenshots pictures > transcript.jsonl
	cp $(SHOTS)/pictures/002-messagebox.png docs/images/workbench-marked-frames.png
	cp $(SHOTS)/pictures/004-dump.png docs/images/takeoff-check.png
	@echo "docs/images: workbench-marked-frames.png, takeoff-check.png (every picture in $(SHOTS)/pictures)"

# Windows: built with MinGW-w64, statically, and tested under Wine (no display needed).
WINDOWS := build/windows
WINDOWS_ZIP := dist/tqstd-windows-x86_64.zip
windows: deps
	cmake --preset windows -DTQ_WERROR=$(WERROR)
	cmake --build --preset windows
	@! x86_64-w64-mingw32-objdump -p $(WINDOWS)/hosts/tqstd.exe | grep 'DLL Name' \
	  | grep -viE 'KERNEL32|ADVAPI32|SHELL32|msvcrt' || { echo "tqstd.exe needs a DLL Windows does not ship"; exit 1; }
	rm -rf $(WINDOWS)/dist && mkdir -p $(WINDOWS)/dist/tqstd/examples dist
	cp $(WINDOWS)/hosts/tqstd.exe README.md $(WINDOWS)/dist/tqstd/
	cp -r $(SITE) $(WINDOWS)/dist/tqstd/examples/site
	rm -f $(WINDOWS_ZIP) && cd $(WINDOWS)/dist && zip -qr $(CURDIR)/$(WINDOWS_ZIP) tqstd
	@echo "$(WINDOWS_ZIP): $$(du -k $(WINDOWS_ZIP) | cut -f1) kB"

# The Wine prefix is made once before the tests: two Wine processes making it at once race.
windows-test: windows
	./cmake/toolchains/wine-run.sh cmd /c exit > /dev/null 2>&1 || true
	ctest --preset windows -j2
	./tests/windows/release_test.sh $(WINDOWS_ZIP)

clean:
	rm -rf build dist
