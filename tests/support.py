"""What the long test runs share: inputs from the registries, translation, the cross compiler, parallel work."""
import argparse
import concurrent.futures
import glob
import os
import shutil
import subprocess
import sys
import tarfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
CACHE = os.path.join(os.environ.get('XDG_CACHE_HOME', os.path.expanduser('~/.cache')), 'rvparse')
ARM_GCC = 'arm-linux-gnueabihf-gcc'
ARM_ROOT = '/usr/arm-linux-gnueabihf'
TRANSLATE = ['--abi=eabi', '--long_precision_bits=32', '--wchar_t_bits=32', '--unsigned_chars', '-D_FORTIFY_SOURCE=0']
COMPILE = [ARM_GCC, '-marm', '-std=gnu89', '-fcommon', '-fno-strict-aliasing', '-fwrapv', '-w']
DIRECT = [ARM_GCC, '-marm', '-std=gnu99', '-funsigned-char', '-fno-strict-aliasing', '-fwrapv', '-w']
RUN = ['qemu-arm', '-L', ARM_ROOT]


def arguments(description, *extra):
    """The options every run has (--build FOLDER) and those given as (name, keywords)."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument('--build', default=os.path.join(ROOT, 'build'))
    for name, keywords in extra:
        parser.add_argument(name, **keywords)
    options = parser.parse_args()
    options.rvparse = os.path.join(os.path.abspath(options.build), 'rvparse')
    return options


def have_cross_tools():
    return bool(shutil.which(ARM_GCC) and shutil.which('qemu-arm'))


def system_includes():
    own = subprocess.run([ARM_GCC, '-print-file-name=include'], capture_output=True, text=True).stdout.strip()
    return ['--sys_include=' + own, '--sys_include=' + ARM_ROOT + '/include']


def run(command, cwd=None, timeout=120, stdin=None):
    """Runs a command; a timeout gives status 124."""
    env = dict(os.environ, SOURCE_DATE_EPOCH='0', ASAN_OPTIONS='detect_leaks=0')
    try:
        return subprocess.run(command, cwd=cwd, capture_output=True, timeout=timeout, env=env, stdin=stdin)
    except subprocess.TimeoutExpired:
        return subprocess.CompletedProcess(command, 124, b'', b'timeout')


def translate(rvparse, source, generated, options=(), cwd=None, timeout=120):
    return run([rvparse] + TRANSLATE + system_includes() + list(options) +
               ['--gen_c_file_name=' + generated, source], cwd=cwd, timeout=timeout)


def npm_package(name):
    """The unpacked folder of an npm package's newest version, or None where the registry can't be reached."""
    os.makedirs(CACHE, exist_ok=True)
    archives = sorted(glob.glob(os.path.join(CACHE, name + '-[0-9]*.tgz')))
    if not archives:
        subprocess.run(['npm', 'pack', '--silent', name], cwd=CACHE, capture_output=True)
        archives = sorted(glob.glob(os.path.join(CACHE, name + '-[0-9]*.tgz')))
    if not archives:
        print('SKIPPED: npm package %s cannot be fetched' % name)
        return None
    folder = archives[-1][:-4]
    if not os.path.isdir(folder):
        with tarfile.open(archives[-1]) as archive:
            archive.extractall(folder + '.part')
        os.rename(folder + '.part', folder)
    return os.path.join(folder, 'package')


def gcc_testsuite(name):
    """A folder of the test suites in Debian's compiler sources (gcc.c-torture, gcc.dg), or None."""
    folder = os.path.join(CACHE, 'torture')
    found = glob.glob(folder + '/*/gcc/testsuite/' + name)
    if found:
        return found[0]
    os.makedirs(CACHE, exist_ok=True)
    packages = glob.glob(os.path.join(CACHE, 'gcc-12-source_*.deb'))
    if not packages:
        subprocess.run(['apt-get', 'download', 'gcc-12-source'], cwd=CACHE, capture_output=True)
        packages = glob.glob(os.path.join(CACHE, 'gcc-12-source_*.deb'))
    if not packages:
        print('SKIPPED: package gcc-12-source cannot be fetched')
        return None
    unpacked = os.path.join(CACHE, 'gcc-12-source')
    subprocess.run(['dpkg-deb', '-x', packages[0], unpacked], check=True)
    tar = glob.glob(unpacked + '/usr/src/gcc-12/gcc-*.tar.xz')[0]
    os.makedirs(folder, exist_ok=True)
    subprocess.run(['tar', '-xJf', tar, '-C', folder, '--wildcards', '*/gcc/testsuite/%s/*' % name], check=True)
    shutil.rmtree(unpacked)
    return glob.glob(folder + '/*/gcc/testsuite/' + name)[0]


def in_parallel(function, items):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count() or 2) as pool:
        return list(pool.map(function, items))


def crashed(done):
    text = done.stderr.decode(errors='replace')
    return (done.returncode < 0 or done.returncode not in (0, 2, 4) or 'INTERNAL ERROR' in text or
            'nternal error' in text or 'AddressSanitizer' in text or 'runtime error:' in text)


def finish(name, passed, failed, skipped=0):
    """The last line that the test command reads; exits with 1 after a failure."""
    print('%s: %d passed, %d failed, %d skipped' % (name, passed, failed, skipped))
    sys.exit(1 if failed else 0)
