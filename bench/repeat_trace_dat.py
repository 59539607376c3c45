#!/usr/bin/env python3
"""Makes a large trace.dat out of a small one: its pages again and again, each time later.

usage: bench/repeat_trace_dat.py IN OUT TIMES

IN is a trace.dat of version 6 with the data of all processors behind one another ("flyrecord"), as
trace-cmd record writes it. The format is that of trace-cmd's manual page trace-cmd.dat(5).
"""
import struct
import sys

PAGE = 4096
FLYRECORD = b"flyrecord\0"


def main():
    source, target, times = sys.argv[1], sys.argv[2], int(sys.argv[3])
    with open(source, "rb") as file:
        data = file.read()
    table = data.index(FLYRECORD) + len(FLYRECORD)
    # The data of the first processor begins at the first page behind the table.
    parts = []
    at = table
    first = len(data)
    while at + 16 <= first:
        offset, size = struct.unpack_from("<QQ", data, at)
        if offset % PAGE or offset + size > len(data):
            break
        parts.append((at, offset, size))
        if size:
            first = min(first, offset)
        at += 16
    stamps = [struct.unpack_from("<Q", data, page)[0]
              for _, offset, size in parts for page in range(offset, offset + size, PAGE)]
    later = max(stamps) - min(stamps) + 100_000_000
    head = bytearray(data[:first])
    end = first
    for entry, _, size in parts:
        struct.pack_into("<QQ", head, entry, end if size else 0, size * times)
        end += size * times
    with open(target, "wb") as out:
        out.write(head)
        for _, offset, size in parts:
            pages = [bytearray(data[page:page + PAGE]) for page in range(offset, offset + size, PAGE)]
            for _ in range(times):
                for page in pages:
                    out.write(page)
                    struct.pack_into("<Q", page, 0, struct.unpack_from("<Q", page)[0] + later)


main()
