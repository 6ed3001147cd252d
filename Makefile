# Short names for what one does all day. Everything here is a line or two of cmake; `scripts/setup` installs what it needs.
PREFIX ?= /usr/local
DESTDIR ?=

.PHONY: build desktop desktop-demo python demo test sanitize fuzz bench lint format install clean

build:
	scripts/setup
	cmake --preset release
	cmake --build --preset release

# The windows beside the program, build/release/welvane-desktop.
desktop:
	scripts/setup desktop
	cmake --preset release -DWELVANE_DESKTOP=ON
	cmake --build --preset release

# The same, opened on the two runs of an example well.
desktop-demo: desktop
	build/release/welvane-desktop examples/kestrel-7-run1.las examples/kestrel-7-run2.las

# The Python package, in an environment of its own: build/python/venv/bin/python.
python:
	scripts/setup python
	scripts/python

demo:
	scripts/demo

test:
	scripts/test

sanitize:
	scripts/test asan

# SECONDS is how long each fuzzer runs.
fuzz:
	scripts/fuzz $(SECONDS)

bench:
	scripts/setup
	cmake --preset bench
	cmake --build --preset bench
	bench/run.sh build/release

lint:
	scripts/lint

format:
	scripts/lint --fix

# Builds nothing when build/release is up to date, so `sudo make install` after `make` leaves no files of root behind.
install:
	@test -x build/release/welvane || { echo "nothing to install yet: run make first" >&2; exit 1; }
	DESTDIR="$(DESTDIR)" cmake --install build/release --prefix "$(PREFIX)"

clean:
	rm -rf build out
