#!/usr/bin/env python3
"""Runs cvn_np_map as a user would and checks what it prints.

usage: test_cvn_np_map.py TOOL SKEWED_TOOL GROUP
"""
import csv
import io
import json
import os
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

TOOL, SKEWED, GROUP = sys.argv[1], sys.argv[2], sys.argv[3]
failures = []


def run(*args, tool=TOOL):
    return subprocess.run([tool, *args], capture_output=True, text=True, timeout=120)


def expect(cond, what):
    if not cond:
        failures.append(what)


def card_types():
    """Every card type the --all check covered, from the README's table."""
    spans = [(0x3D0267, 0x3D026C), (0x3D026D, 0x3D0276), (0x3D0278, 0x3D0281),
             (0x3D028C, 0x3D028F), (0x3D0291, 0x3D0295), (0x3D0296, 0x3D0299),
             (0x3D029B, 0x3D029F), (0x3D02AA, 0x3D02B3), (0x3D02B4, 0x3D02BD),
             (0x3D02C1, 0x3D02D2), (0x3D02D8, 0x3D02DA)]
    return [t for a, b in spans for t in range(a, b + 1)]


BRISCA = ["0x3D0274", "--module", "0:3=10ge", "--module", "0:2=0x10000", "--module", "0:0=40ge"]


def group_map():
    r = run(*BRISCA)
    expect(r.returncode == 0, f"brisca map exits {r.returncode}: {r.stderr}")
    lines = r.stdout.splitlines()
    expect(lines[0] == "card 0x3D0274 (brisca), 0:3=0x10002,0:2=0x10000,0:0=0x10001",
           f"title line: {lines[0]!r}")
    header = next(i for i, l in enumerate(lines) if l.split()[:1] == ["front"])
    rows = [l.split() for l in lines[header + 1:] if l.strip()]
    ports = {row[0]: row for row in rows if row[0].startswith("0x")}
    # cage 3 is NP 1's odd cage: 10GE ports 192.. ; cage 2 NP 1's even cage.
    expect(ports.get("0x35") == ["0x35", "0", "3", "5", "0x35", "10GE", "1", "197"],
           f"row of 0x35: {ports.get('0x35')}")
    expect(ports.get("0x20") == ["0x20", "0", "2", "0", "0x20", "100GE", "1", "117"],
           f"row of 0x20: {ports.get('0x20')}")
    expect(ports.get("0x01") == ["0x01", "0", "0", "1", "0x01", "40GE", "0", "100"],
           f"row of 0x01: {ports.get('0x01')}")
    expect(len(ports) == 13, f"{len(ports)} port rows, want 13")
    widths = {len(l) for l in lines[header:header + 14]}
    expect(len(widths) == 1, f"port table columns not aligned: widths {widths}")
    nps = [row for row in rows if not row[0].startswith("0x") and row[0] != "np"]
    expect(nps == [["0", "2", "0x00"], ["1", "11", "0x20"], ["2", "0", "-"], ["3", "0", "-"]],
           f"NP summary {nps}")

    c = run(*BRISCA, "--format", "csv")
    port_part, np_part = c.stdout.split("\n\n")
    table = list(csv.DictReader(io.StringIO(port_part)))
    expect(len(table) == 13 and table[0].keys() >= {"front", "np", "np_port", "fplate"},
           f"csv ports: {table[:1]}")
    expect(list(csv.DictReader(io.StringIO(np_part)))[1]["local_ports"] == "11", "csv NP row")

    j = json.loads(run(*BRISCA, "--format", "json").stdout)
    p35 = next(p for p in j["ports"] if p["front"] == 0x35)
    expect(j["family"] == "brisca" and j["card_type"] == 0x3D0274, "json card")
    expect(p35["np"] == 1 and p35["np_port"] == 197 and p35["type"] == "10GE", f"json {p35}")
    expect(j["nps"][2]["first_front"] is None, "json: an NP without ports has no first port")

    # A tolvar 2-slice card with a split EP in subslot 1: instance 1's
    # ports carry the instance in bits 5..4.
    t = json.loads(run("0x3D0296", "--module", "1:any=split", "--module", "1:0=100ge",
                       "--module", "1:1=10ge", "--format", "json").stdout)
    fronts = [p["front"] for p in t["ports"]]
    expect(fronts == [0x40] + list(range(0x50, 0x5A)), f"split EP fronts {fronts}")
    expect({p["np"] for p in t["ports"]} == {1}, "subslot 1 is NP 1's")

    # Every card type answers, empty and with a module where its family
    # takes one.
    for ct in card_types():
        r = run(hex(ct))
        expect(r.returncode == 0 and r.stdout.startswith(f"card 0x{ct:06X}"),
               f"{ct:#x}: exit {r.returncode} {r.stderr.strip()}")


def group_bad_input():
    cases = [
        (["0x3D0277"], "unknown card type 0x3D0277"),
        (["banana"], "card type 'banana' is not a number"),
        (["0x3D0274", "--module", "0:3"], "expected SUBSLOT:IFSUBSYS=TYPE"),
        (["0x3D0274", "--module", "0:x=10ge"], "neither a number nor 'any'"),
        (["0x3D0274", "--module", "0:8=10ge"], "8 cages or instances"),
        (["0x3D0274", "--module", "1:0=10ge"], "1 subslot(s)"),
        (["0x3D0267", "--module", "0:0=40ge_alt"], "the fenna family knows"),
        (["0x3D02C3", "--module", "0:0=0x10000"], "the dornik family knows"),
        (["0x3D02D9", "--module", "0:any=split", "--module", "0:0=0x10003"],
         "the tolvar_1slice family knows"),
        (["0x3D0296", "--module", "0:any=2x10ge", "--module", "0:1=10ge"],
         "instance types need a split EP"),
        (["0x3D02C1", "--module", "0:0=10ge"], "does not fit instance 0"),
        (["0x3D0274", "--format", "xml"], "unknown format"),
        (["--all"], "--all goes with --check"),
        ([], "no card type given"),
    ]
    for args, text in cases:
        r = run(*args)
        lines = r.stderr.splitlines()
        expect(r.returncode == 2 and len(lines) == 1 and text in lines[0]
               and "assertion failed" not in r.stderr and r.stdout == "",
               f"{args}: exit {r.returncode}, stderr {r.stderr!r}")


def group_check():
    r = run("--check", "--all")
    last = r.stdout.splitlines()[-1]
    expect(r.returncode == 0 and " 0 disagreements" in last, f"--check --all: {last}")
    cards = int(last.split()[1])
    expect(cards == len(card_types()), f"--all checked {cards} card types")
    known = [l for l in r.stdout.splitlines() if l.startswith("known difference:")]
    expect(len(known) == len(set(known)) and len(known) >= 5, f"known differences {known}")
    expect(any("counts the ports of one cage" in l for l in known), "brisca per-cage count")

    one = run(*BRISCA, "--check")
    expect(one.returncode == 0 and one.stdout.splitlines()[-1].startswith(
        "checked 1 card type, 1 configuration, 13 ports: 0 disagreements"), one.stdout)

    # A library that is wrong about one port: one line, then the summary.
    bad = run(*BRISCA, "--check", tool=SKEWED)
    lines = bad.stdout.splitlines()
    expect(bad.returncode == 1, f"skewed check exits {bad.returncode}")
    expect(lines[:1] == ["0x3D0274 [0:3=0x10002,0:2=0x10000,0:0=0x10001] np-port-to-front: "
                         "front 0x35 (np 1 port 197): back to front 0x34 fplate 0x35 type 0x01 "
                         "status 0x00/0x00"], f"skewed line {lines[:1]}")
    expect(lines[-1].endswith("13 ports: 1 disagreement, 0 known differences"), lines[-1:])
    expect(run("--check", "--all", tool=SKEWED).returncode == 1, "skewed --all passes")


def group_svg():
    with tempfile.TemporaryDirectory() as d:
        path = os.path.join(d, "card.svg")
        r = run(*BRISCA, "--svg", path)
        expect(r.returncode == 0, f"--svg exit {r.returncode} {r.stderr}")
        root = ET.parse(path).getroot()
        ns = "{http://www.w3.org/2000/svg}"
        ports = [e for e in root.iter(ns + "rect") if e.get("class") == "port"]
        expect(len(ports) == 13, f"{len(ports)} port rectangles")
        groups = [g.get("class") for g in root.iter(ns + "g")]
        expect(groups.count("empty") == 5 and groups.count("unit") == 3, f"cages {groups}")
        texts = [t.text for t in root.iter(ns + "text")]
        expect("0x35" in texts and "np 197" in texts and "empty" in texts
               and "NP 3" in texts, "labels and legend")
        expect(len({p.get("fill") for p in ports}) == 2, "two NPs, two colours")
        bad = run(*BRISCA, "--svg", os.path.join(d, "missing", "x.svg"))
        expect(bad.returncode == 2 and "cannot write" in bad.stderr, "unwritable svg")


def group_help():
    r = run("--help")
    for word in ["--module", "--format", "--svg", "--check", "--all", "40ge_alt", "Exit status"]:
        expect(word in r.stdout, f"--help lacks {word}")
    expect(r.returncode == 0, "--help exit")


{"map": group_map, "bad_input": group_bad_input, "check": group_check, "svg": group_svg,
 "help": group_help}[GROUP]()
for f in failures:
    print("FAIL:", f)
sys.exit(1 if failures else 0)
