"""An installed tree serves Python: the package where PYTHONPATH (or, for /usr/local, python3
itself) finds it, loading the installed libvxlocfmt.so, with no build tree in sight."""
import os
import subprocess
import sys


def test_installed_package_loads_the_installed_library(tmp_path):
    build = os.environ["VXLOCFMT_BUILD_DIR"]
    subprocess.run(["cmake", "--install", build, "--prefix", str(tmp_path)], check=True, capture_output=True)
    site = tmp_path / os.environ["VXLOCFMT_PYTHON_INSTALL_DIR"]
    probe = ("import vxlocfmt; print(vxlocfmt.format(23000, 'NLDATE20.', locale='fr_FR')); "
             "print(*[l.split()[-1] for l in open('/proc/self/maps') if 'libvxlocfmt.so' in l][:1])")
    environment = {k: v for k, v in os.environ.items() if not k.startswith(("VXLOCFMT", "PYTHON"))}
    done = subprocess.run([sys.executable, "-c", probe], env={**environment, "PYTHONPATH": str(site)},
                          cwd=tmp_path, capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    text, library = done.stdout.splitlines()
    assert text == "21 décembre 2022"
    assert os.path.realpath(library) == os.path.realpath(tmp_path / "lib" / "libvxlocfmt.so")
