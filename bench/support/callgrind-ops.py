#!/usr/bin/env python3
"""How many instructions a callgrind profile counts, and how many of them
were divisions and square roots, by precision: the operations an in-order
core such as the Cortex-A53 cannot pipeline, which cost it far more than
their share of the count.

    callgrind-ops.py CALLGRIND_OUT   (recorded with --dump-instr=yes)

Prints "instructions N", then "<kind> N" for div_sd, div_ss, sqrt_sd and
sqrt_ss, a packed instruction counting once per lane. Each object's
executed addresses are matched with its disassembly (objdump).
"""
import collections
import re
import subprocess
import sys

# x86-64 mnemonics (SSE and AVX) of the unpipelined operations: kind, lanes.
KINDS = {"divsd": ("div_sd", 1), "divpd": ("div_sd", 2), "divss": ("div_ss", 1), "divps": ("div_ss", 4),
         "sqrtsd": ("sqrt_sd", 1), "sqrtpd": ("sqrt_sd", 2), "sqrtss": ("sqrt_ss", 1), "sqrtps": ("sqrt_ss", 4)}


def executed(path):
    """{object path: {address: times executed}} from a callgrind file."""
    objects, counts = {}, collections.defaultdict(collections.Counter)
    current, address, skip_next = None, 0, False
    with open(path) as f:
        for line in f:
            if line.startswith(("ob=", "cob=")):
                m = re.match(r"c?ob=\((\d+)\)(?: (.*))?", line.rstrip("\n"))
                if m.group(2):
                    objects[m.group(1)] = m.group(2)
                if line.startswith("ob="):
                    current = objects.get(m.group(1))
                continue
            if line.startswith("calls="):
                skip_next = True  # the next cost line is the call's inclusive cost
                continue
            if not line or not (line[0] in "+-*" or line.startswith("0x")):
                continue
            fields = line.split()
            position = fields[0]
            if position == "*":
                pass
            elif position[0] in "+-":
                address += int(position, 0)
            else:
                address = int(position, 16)
            if skip_next:
                skip_next = False
                continue
            if len(fields) >= 3 and current:
                counts[current][address] += int(fields[2])
    return counts


def mnemonics(obj):
    """{address: mnemonic} for an object's code."""
    try:
        text = subprocess.run(["objdump", "-d", "--no-show-raw-insn", obj], capture_output=True, text=True,
                              check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        return {}
    out = {}
    for m in re.finditer(r"^\s*([0-9a-f]+):\s+(\S+)", text, re.M):
        out[int(m.group(1), 16)] = m.group(2)
    return out


def main():
    counts = executed(sys.argv[1])
    total = sum(sum(c.values()) for c in counts.values())
    kinds = collections.Counter({kind: 0 for kind, _ in KINDS.values()})
    for obj, by_address in counts.items():
        names = mnemonics(obj)
        for address, times in by_address.items():
            name = names.get(address, "").lstrip("v")
            if name in KINDS:
                kind, lanes = KINDS[name]
                kinds[kind] += times * lanes
    print("instructions", total)
    for kind, n in sorted(kinds.items()):
        print(kind, n)


if __name__ == "__main__":
    main()
