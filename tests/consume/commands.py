"""What the tests of this directory share: commands, and what the documents show of a program."""

import glob
import os
import re
import subprocess

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.path.dirname(os.path.dirname(HERE))
# Without what would lead a program or a compiler to another build of the library.
LEADING = ("LD_LIBRARY_PATH", "LD_PRELOAD", "CPATH", "LIBRARY_PATH", "PKG_CONFIG_PATH",
           "GLIBC_TUNABLES")
ENVIRONMENT = {key: value for key, value in os.environ.items() if key not in LEADING}


def run(*command, cwd=None, **environment):
    done = subprocess.run(command, env=ENVIRONMENT | environment, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, cwd=cwd)
    if done.returncode:
        raise AssertionError(f"{' '.join(command)} returned {done.returncode}:\n{done.stdout}")
    return done.stdout.replace("\r\n", "\n")


def shown_with(source):
    """The blocks of the document that shows this program."""
    with open(source, encoding="utf-8") as file:
        text = file.read()
    for name in [f"{SOURCE}/README.md", *glob.glob(f"{SOURCE}/docs/*.md")]:
        with open(name, encoding="utf-8") as document:
            blocks = re.findall(r"^```\w*\n(.*?)^```$", document.read(), re.MULTILINE | re.DOTALL)
        if text in blocks:
            return blocks
    raise AssertionError(f"no document shows {source}")
