"""Drives a served disk through libnbd and compares it with a plain shadow file.

  nbd_shadow_io.py SOCKET SHADOW write SEED   random unaligned writes and reads; every
                                              write also goes to SHADOW
  nbd_shadow_io.py SOCKET SHADOW parallel SEED unaligned neighbouring pieces that share
                                              units, written over several connections at
                                              once with every write in flight; the disk
                                              must keep every piece's last bytes
  nbd_shadow_io.py SOCKET SHADOW verify       the whole disk equals SHADOW, and a write is
                                              refused (the server is read-only)

Exits 1 with a message on the first difference.
"""
import random
import sys
import threading

import nbd

MIB = 1 << 20
UNIT = 4096
TABLE_BLOCK = 1023 * UNIT  # the disk bytes one allocation table block maps
CONNECTIONS = 4
ROUNDS = 3


def fail(message):
    print("FAIL: " + message, file=sys.stderr)
    sys.exit(1)


def connect(socket):
    handle = nbd.NBD()
    handle.connect_unix(socket)
    return handle


def random_io(handle, shadow_path, seed):
    size = handle.get_size()
    with open(shadow_path, "rb") as f:
        shadow = bytearray(f.read())
    if len(shadow) != size:
        fail(f"the disk has {size} bytes, the shadow {len(shadow)}")
    rng = random.Random(seed)
    ranges = [(UNIT - 1, 2), (TABLE_BLOCK - 100, 300), (TABLE_BLOCK - 3 * UNIT - 7, 9 * UNIT),
              (size - 5000, 5000), (0, 1), (3 * MIB + 1, MIB + UNIT)]
    for _ in range(30):
        offset = rng.randrange(size)
        ranges.append((offset, 1 + rng.randrange(min(size - offset, 3 * MIB))))
    for offset, length in ranges:
        data = rng.randbytes(length)
        handle.pwrite(data, offset)
        shadow[offset:offset + length] = data
        read_offset = rng.randrange(size)
        read_length = 1 + rng.randrange(min(size - read_offset, 3 * MIB))
        if handle.pread(read_length, read_offset) != shadow[read_offset:read_offset + read_length]:
            fail(f"read of {read_length} bytes at {read_offset} differs from the shadow")
    handle.flush()
    if handle.pread(size, 0) != shadow:
        fail("the whole disk differs from the shadow after the writes")
    with open(shadow_path, "wb") as f:
        f.write(shadow)


def piece_bytes(round_number, length):
    """The bytes of a piece in one round; rounds differ in every byte."""
    return bytes((round_number * 37 + i * 11 + (i >> 9) + 1) & 0xFF for i in range(length))


def write_all_in_flight(handle, writes, failures):
    """Issues every (offset, data) write at once on one connection, then waits for all."""
    try:
        buffers = [(offset, nbd.Buffer.from_bytearray(bytearray(data))) for offset, data in writes]
        cookies = [handle.aio_pwrite(buffer, offset) for offset, buffer in buffers]
        while handle.aio_in_flight() > 0:
            handle.poll(-1)
        for cookie in cookies:
            handle.aio_command_completed(cookie)
    except nbd.Error as error:
        failures.append(str(error))


def parallel_io(socket, shadow_path, seed):
    with open(shadow_path, "rb") as f:
        shadow = bytearray(f.read())
    handles = [connect(socket) for _ in range(CONNECTIONS)]
    rng = random.Random(seed)
    pieces = []
    at = UNIT + 7
    end = min(len(shadow), at + 4 * MIB)
    while at < end:
        length = min(1 + rng.randrange(3 * UNIT), end - at)
        pieces.append((at, length))
        at += length
    for round_number in range(ROUNDS):
        failures = []
        threads = []
        for index, handle in enumerate(handles):
            mine = pieces[index::CONNECTIONS]
            rng.shuffle(mine)
            writes = [(offset, piece_bytes(round_number, length)) for offset, length in mine]
            threads.append(threading.Thread(target=write_all_in_flight,
                                            args=(handle, writes, failures)))
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if failures:
            fail("a parallel write failed: " + failures[0])
    for offset, length in pieces:
        shadow[offset:offset + length] = piece_bytes(ROUNDS - 1, length)
    handles[0].flush()
    disk = handles[1].pread(len(shadow), 0)
    for offset, length in pieces:
        if disk[offset:offset + length] != shadow[offset:offset + length]:
            fail(f"the piece of {length} bytes at {offset} lost its last write")
    if disk != shadow:
        fail("the disk differs from the shadow outside the pieces")
    for handle in handles:
        handle.shutdown()
    with open(shadow_path, "wb") as f:
        f.write(shadow)


def verify_read_only(handle, shadow_path):
    with open(shadow_path, "rb") as f:
        shadow = f.read()
    if not handle.is_read_only():
        fail("the server offers writing")
    if handle.pread(len(shadow), 0) != shadow:
        fail("the disk differs from the shadow")
    try:
        handle.pwrite(b"x", 0)
    except nbd.Error:
        return
    fail("a write to the read-only disk was accepted")


def main():
    socket, shadow_path, mode = sys.argv[1:4]
    if mode == "parallel":
        parallel_io(socket, shadow_path, int(sys.argv[4]))
        return
    handle = connect(socket)
    if mode == "write":
        random_io(handle, shadow_path, int(sys.argv[4]))
    elif mode == "verify":
        verify_read_only(handle, shadow_path)
    else:
        fail("unknown mode " + mode)
    handle.shutdown()


if __name__ == "__main__":
    main()
