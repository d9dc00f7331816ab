#!/usr/bin/env python3
"""Runs cvn_np_map as a user would and checks what it prints: test_cvn_np_map.py TOOL SKEWED GROUP"""
import csv, io, json, subprocess, sys
TOOL, SKEWED, GROUP = sys.argv[1:4]
failures = []
run = lambda *a, tool=TOOL: subprocess.run([tool, *a], capture_output=True, text=True, timeout=120)
expect = lambda cond, what: cond or failures.append(what)

def expect_refused(args, text):  # one line on stderr, exit status 2, never an assertion
    r = run(*args)
    expect(r.returncode == 2 and len(r.stderr.splitlines()) == 1 and text in r.stderr
           and "assertion failed" not in r.stderr and r.stdout == "", f"{args}: {r}")

BRISCA = ["0x3D0274", "--module", "0:3=10ge", "--module", "0:2=0x10000", "--module", "0:0=40ge"]
# brisca: front port 16c + p, NP c div 2 (cages 2n and 2n+1 are NP n's); the
# NP-local port is the speed's base on the even cage, another on the odd one.
BASE = {"10GE": (204, 192), "40GE": (99, 96), "100GE": (117, 116)}
BRISCA_ROWS = [[f"0x{16 * c + p:02X}", "0", str(c), str(p), f"0x{16 * c + p:02X}", t, str(c // 2),
                str(BASE[t][c % 2] + p)] for c, t, n in [(0, "40GE", 2), (2, "100GE", 1),
                                                         (3, "10GE", 10)] for p in range(n)]
HEADER = ["front", "subslot", "unit", "port", "fplate", "type", "np", "np_port"]

def group_map():
    r = run(*BRISCA)
    lines = r.stdout.splitlines()
    expect(r.returncode == 0 and lines[0] == "card 0x3D0274 (brisca), "
           "0:3=0x10002,0:2=0x10000,0:0=0x10001", f"brisca map: {r.returncode} {lines[:1]}")
    expect([l.split() for l in lines[2:16]] == [HEADER] + BRISCA_ROWS and lines[16] == "" and
           len({len(l) for l in lines[2:16]}) == 1, f"brisca port rows {lines[2:16]}")
    expect([l.split() for l in lines[18:]] == [["0", "2", "0x00"], ["1", "11", "0x20"],
                                                ["2", "0", "-"], ["3", "0", "-"]], "NP rows")
    port_part, np_part = run(*BRISCA, "--format", "csv").stdout.split("\n\n")
    expect([list(d.values()) for d in csv.DictReader(io.StringIO(port_part))] == BRISCA_ROWS
           and list(csv.DictReader(io.StringIO(np_part)))[1]["local_ports"] == "11", "csv")
    j = json.loads(run(*BRISCA, "--format", "json").stdout)
    expect(j["family"] == "brisca" and j["card_type"] == 0x3D0274 and j["nps"][2]["first_front"]
           is None and j["ports"][-1] == dict(zip(HEADER, [0x39, 0, 3, 9, 0x39, "10GE", 1, 201])),
           f"json {j}")
    # tolvar 2-slice, split EP in subslot 1 (NP 1's): instance 1's ports have it in bits 5..4.
    t = json.loads(run(*"0x3D0296 --module 1:any=split --module 1:0=100ge --module 1:1=10ge "
                        "--format json".split()).stdout)
    expect([p["front"] for p in t["ports"]] == [0x40] + list(range(0x50, 0x5A))
           and {p["np"] for p in t["ports"]} == {1}, f"split EP {t['ports']}")

def group_question():
    for row in BRISCA_ROWS:  # each brisca port, asked three ways, answers its own row
        for q in (["--front", row[0]], ["--np", f"{row[6]}:{row[7]}"],
                  ["--fplate", f"{row[5].lower()}:{row[4]}"]):
            r = run(*BRISCA, *q)
            expect(r.returncode == 0 and [l.split() for l in r.stdout.splitlines()] ==
                   [HEADER, row], f"{q}: {r.stdout!r} {r.stderr!r}")
    full = json.loads(run(*BRISCA, "--format", "json").stdout)["ports"]
    for fmt, q, want in [("json", ["--np", "1:0xC5"], json.dumps(full[-5])),  # 0x35
                         ("csv", ["--fplate", "4:0x20"], ",".join(HEADER) + "\n" +
                          ",".join(BRISCA_ROWS[2]))]:
        r = run(*BRISCA, "--format", fmt, *q)
        expect(r.stdout == want + "\n", f"{fmt} {q}: {r.stdout!r}")
    odd = run("0x3D0274", "--module", "0:3=100ge", "--front", "0x30").stdout.split()[-2:]
    expect(odd == ["1", "116"], f"100GE in cage 3: {odd}")
    r = run("--help")
    expect(r.returncode == 0 and all(w in r.stdout for w in [
        "--module", "--format", "--svg", "--check", "--all", "40ge_alt", "--front PORT",
        "--np NP:NP_PORT", "--fplate TYPE:PORT", "Exit status"]), f"--help: {r.stdout}")

def group_bad_input():
    b = " ".join(BRISCA) + " "
    for args, text in [
            ("0x3D0277", "unknown card type 0x3D0277"), ("banana", "'banana' is not a number"),
            ("0x3D0274 --module 0:3", "expected SUBSLOT:IFSUBSYS=TYPE"),
            ("0x3D0274 --module 0:x=10ge", "neither a number nor 'any'"),
            ("0x3D0274 --module 0:8=10ge", "8 cages or instances"),
            ("0x3D0274 --module 1:0=10ge", "1 subslot(s)"),
            ("0x3D0267 --module 0:0=40ge_alt", "the fenna family knows"),
            ("0x3D02C3 --module 0:0=0x10000", "the dornik family knows"),
            ("0x3D02D9 --module 0:any=split --module 0:0=0x10003", "the tolvar_1slice family knows"),
            ("0x3D0296 --module 0:any=2x10ge --module 0:1=10ge", "instance types need a split EP"),
            ("0x3D02C1 --module 0:0=10ge", "does not fit instance 0"),
            ("0x3D0274 --format xml", "unknown format"), ("--all", "--all goes with --check"),
            ("", "no card type given"), (b + "--svg /nonexistent/x.svg", "cannot write"),
            (b + "--front 0x10", "has no front port 0x10"),
            (b + "--np 2:204", "has no NP 2 NP-local port 204"),
            (b + "--fplate 10ge:0x20", "has no 10GE faceplate port 0x20"),
            (b + "--np 1", "expected NP:NP_PORT"), (b + "--fplate fast:1", "TYPE:PORT"),
            (b + "--front 0x30 --np 1:192", "one question at a time"),
            (b + "--front 0x30 --check", "neither --check nor --svg")]:
        expect_refused(args.split(), text)

def group_check():
    r = run("--check", "--all")
    last = r.stdout.splitlines()[-1]  # the README: 6 fenna, 22 brisca, 20 brisca_4p, 10 + 10
    # tolvar, 2 maruta, 3 dornik and 12 quellon card types
    expect(r.returncode == 0 and last.startswith("checked 85 card types")
           and " 0 disagreements" in last, f"--check --all: {last}")
    known = [l for l in r.stdout.splitlines() if l.startswith("known difference:")]
    expect(len(known) == len(set(known)) >= 5 and
           any("counts the ports of one cage" in l for l in known), f"known differences {known}")
    one = run(*BRISCA, "--check")
    expect(one.returncode == 0 and one.stdout.splitlines()[-1].startswith(
        "checked 1 card type, 1 configuration, 13 ports: 0 disagreements"), one.stdout)
    # A library that is wrong about one port: one line, then the summary.
    lines = run(*BRISCA, "--check", tool=SKEWED).stdout.splitlines()
    expect(lines[0] == "0x3D0274 [0:3=0x10002,0:2=0x10000,0:0=0x10001] np-port-to-front: front "
           "0x35 (np 1 port 197): back to front 0x34 fplate 0x35 type 0x01 status 0x00/0x00"
           and lines[-1].endswith("13 ports: 1 disagreement, 0 known differences"), lines)
    expect(run("--check", "--all", tool=SKEWED).returncode == 1, "skewed --all passes")

globals()["group_" + GROUP]()
sys.exit("".join(f"FAIL: {f}\n" for f in failures) or None)  # the failures on stderr, status 1
