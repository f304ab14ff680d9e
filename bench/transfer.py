"""Transfer of one file over loopback against rsync -W from a daemon, and resumes after kill -9."""

import pathlib
import re
import subprocess
import sys
import time

from workstation import Workstation, kill, status_kilobytes, wait_for

PIECE = 262144
ROUNDS = 5


def finished(station, server):
    server.wait(timeout=300)
    text = "\n".join(station.server_lines())
    if server.returncode != 0 or "matches" not in text:
        sys.exit("the transfer failed:\n" + text)
    return text


def options(source):
    return ["--push", str(source), "--to", r"C:\Bench\file.mdb", "--piece", str(PIECE), "--once"]


def warm(source):
    """Both programs then read from memory: some systems take the page cache away within seconds."""
    subprocess.run(["cat", str(source)], stdout=subprocess.DEVNULL, check=True)


def push(source):
    """Seconds from FILE_BEGIN to FILE_COMPLETE and the service's peak memory in KB."""
    with Workstation() as station:
        warm(source)
        server = station.start_server(*options(source))
        service = station.start_service()
        text = finished(station, server)
        return int(re.search(r"FILE_COMPLETE after (\d+) ms", text)[1]) / 1000, status_kilobytes(service, "VmHWM")


def rsync(source, folder):
    config = folder / "rsyncd.conf"
    config.write_text(f"port = 8873\nuse chroot = no\nuid = 0\ngid = 0\n[bench]\npath = {source.parent}\n")
    daemon = subprocess.Popen(["rsync", "--daemon", "--no-detach", f"--config={config}"])
    try:
        listing = ["rsync", "rsync://127.0.0.1:8873/"]
        wait_for(lambda: subprocess.run(listing, capture_output=True).returncode == 0, 10, "the rsync daemon")
        target = folder / "copy"
        target.unlink(missing_ok=True)
        warm(source)
        time.sleep(2)  # the service takes as long to find its server: memory freed before is as cold for both
        begin = time.monotonic()
        subprocess.run(["rsync", "-W", f"rsync://127.0.0.1:8873/bench/{source.name}", str(target)], check=True)
        seconds = time.monotonic() - begin
        target.unlink()
        return seconds
    finally:
        daemon.terminate()
        daemon.wait()


def resume_after_kill(source, percent):
    """Bytes received twice when the service is killed once so much of the file has arrived."""
    size = source.stat().st_size
    with Workstation() as station:
        landed = station.drive_c / "Bench" / "file.mdb"
        server = station.start_server(*options(source))
        service = station.start_service()
        wait_for(lambda: landed.exists() and landed.stat().st_size >= size * percent // 100, 60, "the file")
        kill(service)
        held = landed.stat().st_size
        station.start_service()
        text = finished(station, server)
        resumed = int(re.findall(r"FILE_BEGIN_OK from position (\d+)", text)[-1])
        again = held - resumed
        print(f"killed at {percent:2} %: held {held} bytes, resumed at {resumed}, received twice {again}; digest matches")
        return again


def main():
    source = pathlib.Path(sys.argv[1])
    folder = pathlib.Path(sys.argv[2])
    ours, peaks, theirs = [], [], []
    for _ in range(ROUNDS):
        seconds, peak = push(source)
        ours.append(seconds)
        peaks.append(peak)
        theirs.append(rsync(source, folder))
    best, reference = min(ours), min(theirs)
    print(f"transfer of {source.stat().st_size} bytes in pieces of {PIECE}: {best:.2f} s (all: {ours})")
    print(f"rsync -W from a loopback daemon: {reference:.2f} s (all: {[round(t, 2) for t in theirs]})")
    print(f"ratio {best / reference:.2f} (at most 1.3); peak memory of the service {max(peaks)} KB (under 40000)")
    twice = [resume_after_kill(source, percent) for percent in (1, 50, 99)]
    return 0 if best <= 1.3 * reference and max(peaks) < 40000 and max(twice) <= PIECE else 1


sys.exit(main())
