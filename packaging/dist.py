"""Makes a release: the tarball, which has the printed kernels, its checksums, and what packagers take.

usage: dist.py TREE BUILD OUTPUT

TREE is a clone, of which the files that git knows are released as they are there. BUILD is where the
library was built, which has printed the kernels. In OUTPUT, the same files have the same bytes.
"""

import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys

import meson

# Made for one release by its version and its checksums.
TEMPLATES = ("packaging/vcpkg/portfile.cmake", "packaging/vcpkg/vcpkg.json", "packaging/conan/conanfile.py",
             "packaging/conan/conandata.yml")


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, **options).stdout


def copy(source, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
    target.chmod(0o755 if os.access(source, os.X_OK) else 0o644)


def stage(tree, build, place):
    """The files of the release."""
    for name in run("git", "-C", tree, "ls-files", "-z").split("\0"):
        if (tree / name).is_file():
            copy(tree / name, place / name)
    for name in (build / "printed.txt").read_text().split():
        copy(build / name, place / "printed" / name)
    configured = place.parent / "configured"
    (configured / ".cmake/api/v1/query").mkdir(parents=True)
    (configured / ".cmake/api/v1/query/codemodel-v2").touch()
    run("cmake", "-G", "Ninja", "-S", place, "-B", configured, "-D", "ZVXG_TESTS=OFF", "-D", "ZVXG_EXAMPLES=OFF",
        "-D", "ZVXG_PYTHON=ON", "-D", "Python_EXECUTABLE=/usr/bin/python3", "--log-level=WARNING")
    meson.main(place, configured, place)


def pack(place, date):
    """The same bytes whenever and wherever: names in order, nobody's files, the date of the commit."""
    tarball = place.with_name(place.name + ".tar.xz")
    tar = run("tar", "-C", place.parent, "--sort=name", f"--mtime=@{date}", "--owner=0", "--group=0",
              "--numeric-owner", "--format=gnu", "--mode=u=rwX,go=rX", "--use-compress-program=xz -6 -T1",
              "-cf", tarball, place.name)
    assert tar == ""
    return tarball


def debian(place, tarball, date):
    """The source package, whose first part is the tarball."""
    name, _, version = place.name.partition("-")
    output = place.parent / "debian"
    copy(tarball, output / f"{name}_{version}.orig.tar.xz")
    run("cmake", "-D", f"CONFIGURED={place.parent}/configured", "-D", f"OUTPUT={place}/debian",
        "-P", place / "packaging/control.cmake")
    run("dpkg-source", "-b", place, cwd=output, env=os.environ | {"SOURCE_DATE_EPOCH": date})


def main(tree, build, output):
    tree, build, output = (pathlib.Path(path).resolve() for path in (tree, build, output))
    version = re.search(r"^project\(zvxg VERSION (\S+)", (tree / "CMakeLists.txt").read_text(), re.M)[1]
    for name, form in ("CHANGELOG.md", r"^## \[(.+?)\]"), ("packaging/changelog", r"^zvxg \((.+?)-"):
        newest = re.search(form, (tree / name).read_text(), re.M)[1]
        if newest != version:
            sys.exit(f"dist.py: this is version {version}, but {name} begins with {newest}")
    shutil.rmtree(output, ignore_errors=True)
    place = output / f"zvxg-{version}"
    stage(tree, build, place)
    date = run("git", "-C", tree, "log", "-1", "--format=%ct").strip()
    tarball = pack(place, date)
    debian(place, tarball, date)
    for scratch in place, output / "configured":
        shutil.rmtree(scratch)
    content = tarball.read_bytes()
    sums = {name: hashlib.new(name, content).hexdigest() for name in ("sha256", "sha512")}
    (output / f"{tarball.name}.sha256").write_text(f"{sums['sha256']}  {tarball.name}\n")
    for name in TEMPLATES:
        text = (tree / f"{name}.in").read_text()
        for word, value in ("VERSION", version), ("SHA256", sums["sha256"]), ("SHA512", sums["sha512"]):
            text = text.replace(f"@{word}@", value)
        target = output / name.removeprefix("packaging/")
        target.parent.mkdir(exist_ok=True)
        target.write_text(text)
    print(tarball)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
