# Everything from a fresh clone: `make demo`, `make test`. Nothing has to be set up before but g++, make, git and
# a Python 3; whatever else is needed goes into .venv and build.

VENV ?= .venv
BUILD ?= build
JOBS ?= $(shell nproc 2>/dev/null || echo 2)

deps := $(BUILD)/deps
release := $(BUILD)/release
sanitize := $(BUILD)/sanitize
tidy_tree := $(BUILD)/tidy
windows := $(BUILD)/windows
aarch64 := $(BUILD)/aarch64
tidied := platform schema plugins store acquisition api module
MOST ?= 60
# What building and the demonstration need, which is little, and what everything else needs.
venv_ready := $(VENV)/ready
dev_ready := $(VENV)/dev_ready
docs_ready := $(VENV)/docs_ready
systems_ready := $(VENV)/systems_ready
stubs := $(BUILD)/stubs
systems_sources := $(wildcard cmake/toolchains/* tools/systems/* tools/systems/requirements/*)
sources := CMakeLists.txt CMakePresets.json pyproject.toml $(wildcard cmake/*)

# The programs of the virtual environment come first: cmake, ninja, pytest.
export PATH := $(abspath $(VENV))/bin:$(PATH)
in_systems := PYTHONPATH=$(CURDIR)/tools
in_build_tree := PYTHONPATH=$(abspath $(release))/package:$(CURDIR)/python XDG_STATE_HOME=$(abspath $(release))/state
configure = cmake --log-level=NOTICE --preset $(1) -B $(2) -DPython_EXECUTABLE=$(abspath $(VENV))/bin/python \
	-DMOX_DEPS_DIR=$(abspath $(deps))

.PHONY: help venv deps rerun build demo test test-sanitize test-windows test-windows-minimal test-aarch64
.PHONY: test-aarch64-minimal test-agreement test-everywhere test-wheel wheel wheels sdist bench docs format lint tidy tidy-changed clean
.DEFAULT_GOAL := help

help:
	@echo "make demo           read the sample trial, print a summary, save a plot"
	@echo "make test           C++ and Python tests"
	@echo "make test-sanitize  the same under the address and undefined-behaviour sanitizers"
	@echo "make test-windows   the same for Windows, under Wine; make test-windows-minimal does the least"
	@echo "make test-aarch64   the same for 64-bit ARM, emulated; make test-aarch64-minimal does the least"
	@echo "make test-agreement the same files read and written on all three systems, compared to the bit"
	@echo "make test-everywhere  all of these, and the wheels; hours"
	@echo "make wheels         wheels for Linux and Windows of all Pythons, checked and tried"
	@echo "make wheel          a self-contained wheel in dist/"
	@echo "make sdist          the source archive in dist/, with the C++ headers that it needs"
	@echo "make test-wheel     install that wheel into an empty environment and use it"
	@echo "make bench          compare reading and writing with plain C++ programs and other packages"
	@echo "make docs           the site of the documents, $(BUILD)/docs/html/index.html"
	@echo "make build          the module alone, in $(release)/package"
	@echo "make format, lint, tidy, tidy-changed, clean"

venv: $(dev_ready)

# For the tests of `Trial.to_rerun`, which are skipped without it.
rerun: $(dev_ready)
	@tools/install_group.sh $(VENV) rerun

# Dependencies that are installed on the machine are not fetched; configuring finds out.
deps: $(release)/configured

$(venv_ready): pyproject.toml tools/find_python.sh tools/make_venv.sh tools/install_group.sh
	@echo "Making $(VENV)"
	@interpreter=$$(tools/find_python.sh $(BUILD)/python) && \
		tools/make_venv.sh $(VENV) "$$interpreter" $(deps)
	@touch $@

$(dev_ready): $(venv_ready)
	@tools/install_group.sh $(VENV) dev
	@touch $@

$(systems_ready): $(venv_ready)
	@tools/install_group.sh $(VENV) systems
	@touch $@

$(docs_ready): $(dev_ready)
	@tools/install_group.sh $(VENV) docs
	@touch $@

$(release)/configured: $(venv_ready) $(sources)
	@$(call configure,release,$(release)) -DMOX_BUILD_TESTS=ON -DMOX_BUILD_BENCHMARKS=ON
	@touch $@

$(sanitize)/configured: $(venv_ready) $(sources)
	@$(call configure,sanitize,$(sanitize)) -DMOX_BUILD_BENCHMARKS=OFF
	@touch $@

$(tidy_tree)/configured: $(venv_ready) $(sources)
	@$(call configure,dev,$(tidy_tree)) -DMOX_BUILD_TESTS=OFF -DMOX_BUILD_BENCHMARKS=OFF
	@touch $@

$(windows)/configured: $(systems_ready) $(sources) $(systems_sources)
	@settings=$$($(in_systems) python -m systems.windows) && $(call configure,windows,$(windows)) $$settings
	@touch $@

$(aarch64)/configured: $(systems_ready) $(sources) $(systems_sources)
	@settings=$$($(in_systems) python -m systems.linux aarch64 3.13) && \
		$(call configure,release,$(aarch64)) -DMOX_BUILD_TESTS=ON $$settings
	@touch $@

build: $(release)/configured
	@cmake --build $(release) --parallel $(JOBS) --target mox_package

demo: build
	@$(in_build_tree) python examples/demo.py

test: $(release)/configured $(dev_ready)
	@cmake --build $(release) --parallel $(JOBS)
	@python tools/run_tests.py $(release)

test-sanitize: $(sanitize)/configured $(dev_ready)
	@cmake --build $(sanitize) --parallel $(JOBS)
	@python tools/run_tests.py $(sanitize) --sanitize

test-aarch64: $(aarch64)/configured
	@cmake --build $(aarch64) --parallel $(JOBS)
	@$(in_systems) python -m systems.test_aarch64 $(aarch64)

test-aarch64-minimal: $(aarch64)/configured
	@cmake --build $(aarch64) --parallel $(JOBS) --target mox_package
	@$(in_systems) python -m systems.test_aarch64 $(aarch64) --minimal

test-windows: $(windows)/configured
	@cmake --build $(windows) --parallel $(JOBS)
	@$(in_systems) python -m systems.test_windows $(windows)

test-windows-minimal: $(windows)/configured
	@cmake --build $(windows) --parallel $(JOBS) --target mox_package
	@$(in_systems) python -m systems.test_windows $(windows) --minimal

# What a system must not change: the numbers that are read, and the bytes that are written.
test-agreement: build $(aarch64)/configured $(windows)/configured
	@for tree in $(aarch64) $(windows); do cmake --build $$tree --parallel $(JOBS) --target mox_package || exit 1; done
	@$(in_systems) python -m systems.test_agreement $(release) aarch64=$(aarch64) windows=$(windows)

# Hours, on two cores.
test-everywhere: test test-windows test-aarch64 test-agreement wheels

wheel: $(venv_ready)
	@python -m pip wheel -qq --no-deps --no-build-isolation --wheel-dir dist \
		--config-settings=cmake.define.MOX_DEPS_DIR=$(abspath $(deps)) .
	@ls dist/*.whl

sdist: $(venv_ready)
	@python -c "from scikit_build_core.build import build_sdist; build_sdist('dist')" >/dev/null
	@ls dist/*.tar.gz

# WHEELS="cp313-* cp312-*aarch64" makes these alone.
wheels: $(systems_ready)
	@$(in_systems) python -m systems.make_wheels --parallel $(JOBS) $(foreach name,$(WHEELS),'$(name)')

test-wheel: wheel
	@python tools/check_wheel.py dist

bench: $(release)/configured $(dev_ready)
	@cmake --build $(release) --parallel $(JOBS)
	@$(in_build_tree) python benchmarks/run.py --build $(release) --page docs
	@$(in_build_tree) python benchmarks/bulk_memory.py

# The examples of the pages run as tests; here they draw the pictures. Warnings are errors.
docs: build $(docs_ready)
	@$(in_build_tree) python tools/make_site.py $(BUILD)/docs

cpp_files = $(shell git ls-files --cached --others --exclude-standard '*.cpp' '*.hpp')
js_files = $(shell git ls-files --cached --others --exclude-standard '*.js')

format: $(dev_ready)
	@clang-format -i $(cpp_files)
	@ruff format --quiet .
	@ruff check --quiet --fix .
	@oxfmt $(js_files) >/dev/null

# The types of the extension module are made for mypy, since lint looks at sources that nobody built yet.
lint: $(dev_ready)
	@clang-format --dry-run --Werror $(cpp_files)
	@ruff format --quiet --check .
	@ruff check --quiet .
	@oxfmt --list-different $(js_files)
	@oxlint --quiet $(js_files)
	@python tools/make_stub.py $(stubs)/_moxPY/__init__.pyi && cp module/trial.pyi $(stubs)/_moxPY
	@MYPYPATH=$(stubs) mypy

# Minutes, not seconds: the analyzer follows every path. FILES="a.cpp b.cpp" looks at these alone.
# A tree of its own, which is configured only: where sources are compiled together, no command names one.
tidy: $(tidy_tree)/configured
	@tools/install_group.sh $(VENV) tidy
	@run-clang-tidy.py -quiet -j $(JOBS) -p $(tidy_tree) \
		$(if $(FILES),$(FILES:%='^$(CURDIR)/%$$'),$(tidied:%='^$(CURDIR)/%/'))

# Those that changed since BASE, by default since this branch left the main one; at most MOST of them.
tidy-changed: $(venv_ready)
	@files=$$(python tools/changed_sources.py $(BASE:%=--base %) --most $(MOST) $(tidied)) && \
		if [ -z "$$files" ]; then echo "No C++ source has changed"; \
		else $(MAKE) --no-print-directory tidy FILES="$$(echo $$files)"; fi

clean:
	rm -rf $(BUILD) dist
