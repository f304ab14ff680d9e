"""Memory and processor time of the service with 1000 idle local connections."""

import os
import resource
import socket
import sys
import time

from workstation import Workstation, cpu_ticks, status_kilobytes, wait_for

CONNECTIONS = 1000
SECONDS = 20


def connect():
    return socket.create_connection(("127.0.0.1", 16379), timeout=10)


def listening():
    try:
        connect().close()
        return True
    except OSError:
        return False


def main():
    resource.setrlimit(resource.RLIMIT_NOFILE, (4096, resource.getrlimit(resource.RLIMIT_NOFILE)[1]))
    with Workstation() as station:
        service = station.start_service()
        wait_for(listening, 20, "the local port")
        alone = status_kilobytes(service, "VmRSS")
        connections = [connect() for _ in range(CONNECTIONS)]
        time.sleep(2)  # lets the accepts finish
        before = cpu_ticks(service)
        time.sleep(SECONDS)
        ticks = cpu_ticks(service) - before
        memory = status_kilobytes(service, "VmRSS")
        for connection in connections:
            connection.close()
    per_second = os.sysconf("SC_CLK_TCK")
    print(f"{CONNECTIONS} idle connections: {memory} KB (under 40000; {alone} KB without)")
    print(f"processor time in {SECONDS} s: {ticks} ticks of 1/{per_second} s (at most 2: the timers)")
    return 0 if memory < 40000 and ticks <= 2 else 1


sys.exit(main())
