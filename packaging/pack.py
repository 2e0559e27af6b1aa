#!/usr/bin/env python3
"""Packs the finished program folders into what a user downloads. ./package builds them and calls this.

The same files and the same time give the same bytes: names are sorted, times and rights are fixed.
"""

import argparse
import hashlib
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import time
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
TOP_FOLDER = "Orvane Lite"
# What belongs to the program in its folder. Settings that it wrote beside itself in a trial do not.
PARTS = ("Orvane.exe", "Images", "Help")
# Of the run-time that the compiler puts into the exe.
RUNTIME_LICENCES = pathlib.Path("/usr/share/doc/mingw-w64-common/copyright")
FILE_MODE = 0o100644


def stage(dist, folder, epoch):
    """Copies the program and its licences into a folder, all files of the same age."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for part in PARTS:
        source = dist / part
        if source.is_dir():
            shutil.copytree(source, folder / part)
        else:
            shutil.copyfile(source, folder / part)
    for source, name in ((ROOT / "LICENSE", "LICENSE.txt"), (RUNTIME_LICENCES, "LICENSE-runtime.txt")):
        # Ends of lines as the text editor of older systems needs them.
        (folder / name).write_bytes(b"\r\n".join(source.read_bytes().splitlines()) + b"\r\n")
    for path in files_of(folder):
        os.utime(path, (epoch, epoch))
    return folder


def files_of(folder):
    """All files below a folder, in an order that no file system decides."""
    return sorted((path for path in folder.rglob("*") if path.is_file()), key=lambda path: path.as_posix())


def make_zip(folder, target, epoch):
    """One folder with the program in it: unpacked over an older copy it leaves the settings alone."""
    moment = max(time.gmtime(epoch)[:6], (1980, 1, 1, 0, 0, 0))
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in files_of(folder):
            entry = zipfile.ZipInfo(f"{TOP_FOLDER}/{path.relative_to(folder).as_posix()}", moment)
            entry.create_system = 3  # wherever this runs
            entry.external_attr = FILE_MODE << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, path.read_bytes())


def write_file_list(folder, path):
    """The installer's macros with one line for each file, so that it removes what it brought and nothing else."""
    install, remove, folders = [], [], []
    for file in files_of(folder):
        name = str(file.relative_to(folder)).replace("/", "\\")
        parent = "\\".join(["$INSTDIR", *name.split("\\")[:-1]])
        if parent not in folders:
            folders.append(parent)
        install += [f'  SetOutPath "{parent}"', f'  File "{file}"']
        remove.append(f'  Delete "$INSTDIR\\{name}"')
    # The inner ones before the outer ones; the program's own is the script's.
    remove += [f'  RMDir "{folder}"' for folder in sorted(folders, reverse=True) if folder != "$INSTDIR"]
    path.write_text("\n".join(["!macro InstallFiles", *install, "!macroend", "!macro RemoveFiles", *remove,
                               "!macroend", ""]))


def write_side_picture(path):
    """The picture beside the installer's last page: the bars of the program's icon on the ground of its face. A BMP
    with 24 bits a pixel and rows from the bottom up."""
    width, height = 164, 314
    ground, lit, alarm = b"\x2e\x28\x22", b"\xf0\xd2\x28", b"\x46\x46\xe6"  # blue, green, red
    rows = [bytearray(ground * width) for _ in range(height)]
    for bar in range(5):
        left = 32 + 21 * bar
        for bottom, top, color in ((110, 120, alarm if bar > 2 else lit), (128, 146 + 14 * bar, lit)):
            for row in rows[bottom:top]:
                row[3 * left:3 * (left + 16)] = color * 16
    data = b"".join(bytes(row) for row in rows)  # 492 bytes a row, a multiple of four
    header = struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54)
    path.write_bytes(header + struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(data), 0, 0, 0, 0) + data)


def make_setup(folder, target, version, work, epoch):
    file_list, picture = work / "files.nsh", work / "side.bmp"
    write_file_list(folder, file_list)
    write_side_picture(picture)
    os.utime(picture, (epoch, epoch))  # it is one of the installer's files
    size = sum(path.stat().st_size for path in files_of(folder)) // 1024
    defines = {"VERSION": version, "OUT": target, "FILES": file_list, "SIZE": size, "PICTURE": picture,
               "ICON": ROOT / "app/orvane.ico"}
    subprocess.run(
        ["makensis", "-V2", "-WX", "-NOCD", *(f"-D{name}={value}" for name, value in defines.items()),
         str(ROOT / "packaging/orvane.nsi")],
        check=True, env={**os.environ, "SOURCE_DATE_EPOCH": str(epoch), "TZ": "UTC", "LC_ALL": "C.UTF-8"})


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--version", required=True)
    parser.add_argument("--epoch", type=int, required=True, help="time of the commit, in seconds since 1970")
    parser.add_argument("--work", type=pathlib.Path, required=True, help="folder for what is needed on the way")
    parser.add_argument("--dist", type=pathlib.Path, required=True, help="has win64 and win32, gets the packages")
    arguments = parser.parse_args()
    dist, work = arguments.dist.resolve(), arguments.work.resolve()
    for old in dist.glob("orvane-lite-*"):
        old.unlink()
    base = f"orvane-lite-{arguments.version}"
    packages = []
    for system in ("win64", "win32"):
        folder = stage(dist / system, work / system, arguments.epoch)
        packages.append(dist / f"{base}-{system}.zip")
        make_zip(folder, packages[-1], arguments.epoch)
    packages.append(dist / f"{base}-setup.exe")
    make_setup(work / "win64", packages[-1], arguments.version, work, arguments.epoch)
    sums = [f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n" for path in sorted(packages)]
    (dist / "SHA256SUMS").write_text("".join(sums))
    return 0


if __name__ == "__main__":
    sys.exit(main())
