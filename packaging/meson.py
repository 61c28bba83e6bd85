"""Prints meson.build: the installed targets of a configured build, as CMake's file API tells them.

usage: meson.py SOURCE BUILD OUTPUT

The sources, their options and how they are linked are stated in CMake's files only. Two libraries of one
file name are in directories of their own, with a meson.build each. The Python package is left to pip.
"""

import json
import os
import pathlib
import re
import shlex
import sys

HEAD = """# Made from CMake's files by `./dev dist`; changes belong there.
project('zvxg', 'cpp', version: '{version}', license: 'MIT', meson_version: '>=1.0',
  default_options: ['buildtype=plain', 'cpp_std=c++20', 'default_library=both'])
if host_machine.system() != 'linux' or host_machine.cpu_family() != 'x86_64'
  error('this build is for Linux on x86_64; CMakeLists.txt has the others')
endif
cpp = meson.get_compiler('cpp')
root = meson.project_source_root()
pkgconfig = import('pkgconfig')
"""
TAIL = """
install_subdir('include', install_dir: get_option('includedir'), strip_directory: true)
install_man('tools/zvxg-bench/zvxg-bench.1')
pkgconfig.generate(zvxg, libraries: [zvxcore], libraries_private: ['-lm'],
  description: 'Short signal transforms')
pkgconfig.generate(zvxgmany, requires: ['zvxg = ' + meson.project_version()],
  description: 'Many short signal transforms in one call')
test('verify', zvxg_bench, args: ['verify'], timeout: 300)
"""

# What CMake gives to g++ only.
OF_GXX = re.compile(r"-fno-(tree-(?!slp)|ipa-|optimize-strlen|store-merging|split-wide-types|caller-saves)")


class Build:
    def __init__(self, source, build):
        self.source, self.build = (pathlib.Path(path).resolve() for path in (source, build))
        reply = self.build / ".cmake/api/v1/reply"
        index = json.loads(max(reply.glob("index-*.json")).read_text())
        model = json.loads((reply / index["reply"]["codemodel-v2"]["jsonFile"]).read_text())
        self.targets = {target["id"]: json.loads((reply / target["jsonFile"]).read_text())
                        for target in model["configurations"][0]["targets"]}
        cache = (self.build / "CMakeCache.txt").read_text()
        self.version = re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.*)", cache, re.M)[1]
        self.texts = {"": HEAD.format(version=self.version)}
        self.done = {}

    def place(self, path):
        """In the source tree, where what the build would make is below printed/."""
        path = pathlib.Path(path)
        path = path if path.is_absolute() else self.source / path
        if self.build in path.parents or path == self.build:
            path = self.source / "printed" / path.relative_to(self.build)
        return path.relative_to(self.source).as_posix() if path.exists() else None

    def of(self, target):
        """The Meson variable of a target; None if it makes no library or program."""
        if target["id"] in self.done or target["type"] == "UTILITY":
            return self.done.get(target["id"])
        needed = [self.targets[one["id"]] for one in target.get("dependencies", [])]
        if target["type"] == "EXECUTABLE" and "install" not in target:
            return None  # a generator
        name = re.sub(r"\W", "_", target["name"])
        self.done[target["id"]] = name
        objects = [f"{group}.extract_all_objects(recursive: false)" for group in self.groups(name, target)]
        if target["type"] == "OBJECT_LIBRARY":
            self.texts[""] += f"{name} = [{', '.join(objects)}]\n"
            return name
        parts, linked = [], []
        for one in needed:
            variable = self.of(one)
            if variable:
                (parts if one["type"] == "OBJECT_LIBRARY" else linked).append(variable)
        self.library(name, target, " + ".join([f"[{', '.join(objects)}]"] * bool(objects) + parts), linked)
        return name

    def groups(self, name, target):
        """A static library for the sources that have the same options."""
        for number, group in enumerate(target.get("compileGroups", [])):
            sources = [self.place(target["sources"][i]["path"]) for i in group["sourceIndexes"]]
            options = [option for fragment in group.get("compileCommandFragments", [])
                       for option in shlex.split(fragment["fragment"])]
            options = [option for option in options
                       if not re.match(r"-std=|-fPIC|-f\w+-prefix-map=|-fstack-usage|-W", option)]
            options += ["-D" + one["define"].replace('\\"', '"') for one in group.get("defines", [])]
            includes = [self.place(one["path"]) for one in group.get("includes", []) if not one.get("isSystem")]
            variable = f"{name}_{number}"
            self.texts[""] += (
                f"\n{variable} = static_library('{variable}', files({strings(sources)}),\n"
                f"  include_directories: include_directories({strings(filter(None, includes))}),\n"
                f"  cpp_args: {strings(one for one in options if not OF_GXX.match(one))}"
                f" + cpp.get_supported_arguments({strings(one for one in options if OF_GXX.match(one))}),\n"
                "  pic: true, build_by_default: false)\n")
            yield variable

    def library(self, name, target, objects, linked):
        install = target.get("install", {}).get("destinations", [{}])[0].get("path")
        kind = {"SHARED_LIBRARY": "shared_library", "STATIC_LIBRARY": "static_library",
                "EXECUTABLE": "executable"}[target["type"]]
        output = re.sub(r"^lib|\.\w+$", "", target["nameOnDisk"])
        arguments = [f"'{output}'", f"objects: {objects}", f"link_with: [{', '.join(linked)}]",
                     "link_language: 'cpp'"]
        directory = ""
        if kind != "static_library":
            options = [option for part in target["link"].get("commandFragments", [])
                       for option in shlex.split(part["fragment"]) if option.startswith("-")]
            options = [f"'{option}'".replace(f"{self.source}/", "' + root + '/") for option in options
                       if not re.match(r"-O|-D|-W(?!l,)|-Wl,-rpath|-Wl,--dependency", option)]
            arguments.append(f"link_args: [{', '.join(options)}]")
        if kind == "shared_library":
            major = self.version.split(".")[0]
            if any(output == other for other in self.texts.get("outputs", [])):
                directory = f"printed/{name}"
                # By the name that the loader looks for, without the link that the linker would.
                arguments.append(f"name_suffix: 'so.{major}'")
            else:
                arguments += [f"version: '{self.version}'", f"soversion: '{major}'"]
            self.texts.setdefault("outputs", []).append(output)
        if install:
            where = install.partition("/")
            base = {"lib": "libdir", "bin": "bindir"}[where[0]]
            rpath = ("'$ORIGIN" + ":$ORIGIN/../.." * bool(where[2]) + "'" if base == "libdir" else
                     "'$ORIGIN/..' / get_option('libdir')")
            arguments += ["install: true", f"install_dir: get_option('{base}') / '{where[2]}'"]
            if kind != "static_library":
                arguments.append(f"install_rpath: {rpath}")
        text = f"{name} = {kind}({', '.join(arguments)})\n"
        if directory:
            self.texts[directory] = text
            text = f"subdir('{directory}')\n"
        self.texts[""] += text


def strings(values):
    return "[" + ", ".join("'" + value.replace("\\", "\\\\").replace("'", "\\'") + "'" for value in values) + "]"


def main(source, build, output):
    made = Build(source, build)
    for target in made.targets.values():
        if "install" in target and target["type"] != "MODULE_LIBRARY":
            made.of(target)
    made.texts[""] += TAIL
    made.texts.pop("outputs")
    for directory, text in made.texts.items():
        path = pathlib.Path(output) / directory / "meson.build"
        path.parent.mkdir(exist_ok=True)
        compiler = r"-DZVXG_COMPILER=\"[^\"]*\""
        text = re.sub(f"'{compiler}'", "'-DZVXG_COMPILER=\"@0@ @1@, Meson\"'.format(cpp.get_id(), cpp.version())",
                      text)
        path.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
