"""What the checks of saved rasters share. Everything is looked at through libtiff's tools and ImageMagick."""
import re
import subprocess
import sys


def run(*command, text=True):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=text).stdout


def make(target, *convert_arguments):
    """Has ImageMagick make an expected image."""
    run("convert", *convert_arguments, target)


def fail(message):
    sys.exit(f"CHECK MISSED: {message}")


def expect_same_pixels(saved, expected):
    """Both of one size, and not a single pixel different."""
    for path in (saved, expected):
        if not size(path)[0]:
            fail(f"{path} can't be read")
    if size(saved) != size(expected):
        fail(f"{saved} measures {size(saved)}, but {size(expected)} was expected")
    # compare ends with 1 where pixels differ, and prints their number to the error output.
    result = subprocess.run(["compare", "-metric", "AE", saved, expected, "null:"], capture_output=True, text=True)
    if result.returncode > 1:
        fail(f"{saved} can't be compared with {expected}: {result.stderr}")
    if result.returncode != 0:
        fail(f"{saved} differs from {expected} in {result.stderr} pixels")
    print(f"{saved}: {size(saved)}, same pixels as {expected}")


def size(path):
    return tuple(int(side) for side in run("identify", "-format", "%w %h", path).split())


def expect_tiff(path, compression, dpi):
    """One directory, one bit a pixel, this compression scheme (as tiffinfo names it) and this resolution."""
    report = run("tiffinfo", path)

    def value(pattern):
        found = re.findall(pattern, report)
        return found[0] if len(found) == 1 else found

    found = {
        "compression": value(r"Compression Scheme: (.*)"),
        "resolution": value(r"Resolution: (.*)"),
        "bits": value(r"Bits/Sample: (.*)"),
    }
    expected = {"compression": compression, "resolution": f"{dpi}, {dpi} pixels/inch", "bits": "1"}
    if found != expected:
        fail(f"{path} has {found}, but {expected} was expected")
    print(f"{path}: {found}")


def expect_density(path, dpi, tolerance=0.02):
    """Of formats that keep whole dots a metre the resolution comes back with a rounding error."""
    x, y = (float(value) for value in run("identify", "-units", "PixelsPerInch", "-format", "%x %y", path).split())
    if abs(x - dpi) > tolerance or abs(y - dpi) > tolerance:
        fail(f"{path} has {x} x {y} dpi, but {dpi} was expected")
    print(f"{path}: {x} x {y} dpi")
