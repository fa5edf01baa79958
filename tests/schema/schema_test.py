#!/usr/bin/env python3
"""Checks block model files against schema/block_model.schema.json (JSON Schema draft 2020-12).

validate FILE...         every file (plain or gzip) is valid
written DIR -- PROGRAM   runs a test program that keeps every file it writes in DIR, then validates them
                         all and checks that together they use every key the schema names
cases BMTOOL DIR         files the reader refuses for a type reason are refused by the schema too, and
                         files the schema accepts, in forms the reader tolerates, pass bmtool info and
                         convert (whose output is valid again)
"""

import gzip
import json
import os
import shutil
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    sys.exit("schema_test: python3-jsonschema (Debian) is missing; scripts/setup installs it")

SCHEMA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "schema",
                      "block_model.schema.json")


def validator():
    with open(SCHEMA, encoding="utf-8") as f:
        schema = json.load(f)
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


def load(path):
    with open(path, "rb") as f:
        data = f.read()
    return json.loads((gzip.decompress(data) if data[:2] == b"\x1f\x8b" else data).decode("utf-8"))


def errors_of(check, document):
    return ["%s: %s" % (e.json_path, e.message[:200]) for e in check.iter_errors(document)]


def schema_keys(node, keys):
    """Every member name that the schema's objects list under "properties"."""
    if isinstance(node, dict):
        for name, sub in node.get("properties", {}).items():
            keys.add(name)
            schema_keys(sub, keys)
        for key, sub in node.items():
            if key != "properties":
                schema_keys(sub, keys)
    elif isinstance(node, list):
        for sub in node:
            schema_keys(sub, keys)


def document_keys(document, keys):
    stack = [document]
    while stack:
        node = stack.pop()
        if isinstance(node, dict):
            keys.update(node.keys())
            stack.extend(node.values())
        elif isinstance(node, list):
            stack.extend(node)


def validate(check, paths):
    failed = 0
    used = set()
    for path in paths:
        document = load(path)
        document_keys(document, used)
        errors = errors_of(check, document)
        print("%s: %s" % (path, "valid" if not errors else "INVALID"))
        for e in errors[:10]:
            print("    " + e)
        failed += bool(errors)
    return failed, used


def run_written(check, folder, program):
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    env = dict(os.environ, MZ_KEEP_WRITTEN_FILES=folder)
    if subprocess.run(program, env=env, check=False).returncode != 0:
        print("FAIL: the test program failed")
        return 1
    paths = sorted(os.path.join(folder, name) for name in os.listdir(folder))
    if not paths:
        print("FAIL: the test program kept no file")
        return 1
    failed, used = validate(check, paths)
    named = set()
    schema_keys(check.schema, named)
    unused = sorted(named - used)
    if unused:
        print("FAIL: no written file uses " + ", ".join(unused))
        failed += 1
    print("%d files, %d invalid" % (len(paths), failed))
    return failed


def block(members):
    """A file whose top block "t" has the given members (a JSON text) besides its module name."""
    return '{"schema":"tessel:schema:block_model:1.0","top_block":{"module_name":"t"%s}}' % (
        "," + members if members else "")


def port(members):
    return block('"boundary":{"ports":{"p":{%s}}}' % members)


def register(members):
    return block('"boundary":{"memory_maps":{"m":{"range":"4K","address_blocks":{"b":{"type":"memory",'
                 '"offset":"0","range":"1K","registers":{"r":{%s}}}}}}}' % members)


def noc_interface(members):
    return block('"boundary":{"noc_interfaces":{"n":{"mode":"nsu","protocol":"axis","category":"pl"%s}}}'
                 % members)


# Files that the reader refuses for the type of a value: bmtool reads none of them, and the schema
# accepts none of them.
REFUSED = [
    ("the root is no object", '[{"top_block":{"module_name":"t"}}]'),
    ("the top block is no object", '{"top_block":"t"}'),
    ("a module name that is null", '{"top_block":{"module_name":null}}'),
    ("a module name that is an object", '{"top_block":{"module_name":{}}}'),
    ("a text that is a fraction", block('"vlnv":1.5')),
    ("a text that is too large a number", block('"enablement":18446744073709551615')),
    ("a boolean that is an array", block('"valid":[]')),
    ("a boolean that is null", block('"transparent":null')),
    ("a boolean that is a fraction", noc_interface(',"editable":0.5')),
    ("a sub-block that is no object", block('"contents":{"sub_blocks":{"u":1}}')),
    ("a value object that is a string", block('"configuration":{"attributes":{"A":"x"}}')),
    ("a value that is null", block('"configuration":{"generics":{"G":{"value":null}}}')),
    ("a value that is a fraction", block('"configuration":{"parameters":{"P":{"value":2.5}}}')),
    ("a port size that is a fraction", port('"type":"vector","direction":"in","size_left":1.5')),
    ("a port size that is no number", port('"type":"vector","direction":"in","size_right":"x"')),
    ("a port type that is an object", port('"type":{},"direction":"in"')),
    ("a register width that is an array", register('"offset":"0","width":[32]')),
    ("a register width past 32 bits", register('"offset":"0","width":"99999999999"')),
    ("a register width past 64 bits", register('"offset":"0","width":18446744073709551615')),
    ("a description that is a fraction", register('"offset":"0","width":8,"description":0.1')),
    ("a field offset that is null", register('"offset":"0","width":8,"fields":{"f":{"offset":null,"width":1}}')),
    ("a destination id that is an object", noc_interface(',"dest_id":{}')),
    ("an aperture that is no object", noc_interface(',"address_apertures":[1]')),
    ("an aperture offset that is a fraction", noc_interface(',"address_apertures":[{"offset":0.5,"range":"4K"}]')),
    ("a remap source that is an object",
     block('"boundary":{"bridges":{"b":{"source":"S","target":"M","address_remaps":'
           '[{"source":{},"target":"0x0:0xFFF"}]}}}')),
    ("a target that is no string", block('"contents":{"port_connections":{"n":{"targets":["a",1]}}}')),
    ("a port map's physical port that is null",
     block('"boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave","port_maps":{"CLK":'
           '{"physical_port":null}}}}}')),
    ("a NoC link end that is a fraction", block('"contents":{"noc_connections":{"l":{"source":1.5,"target":"b/n"}}}')),
]

# Refused by the reader, but a whole number to JSON Schema: the one gap, named in the schema.
GAP = [("a register width with a fraction of zero", register('"offset":"0","width":16.0'))]

# Files the schema accepts in forms that the writer does not use and the reader tolerates.
TOLERATED = [
    ("no schema member", '{"top_block":{"module_name":"t"}}'),
    ("empty groups and collections",
     block('"configuration":{"attributes":{}},"boundary":{},"contents":{"sub_blocks":{}}')),
    ("defaults written out",
     block('"vlnv":"","base_address":"0x0","valid":false,"transparent":true,"boundary":{"address_spaces":'
           '{"s":{"range":"4K","address_segments":{"g":{"type":"both","offset":"0","range":"1K"}}}}}')),
    ("enumeration texts the model does not know, written empty", port('"type":"","direction":""')),
    ("addresses in other forms", block('"base_address":"64K","boundary":{"memory_maps":{"m":{"range":"4096",'
                                       '"address_blocks":{"b":{"type":"memory","offset":"1_000","range":"1K",'
                                       '"access":"read_write"}}}}}')),
    ("a value and a description in pieces, and a line break after the text",
     register('"offset":"0","width":8,"description":["long ","text"],"parameters":{"P":{"value":["ab","cd"]}}')
     + "\n"),
    ("both address references on one interface",
     block('"boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave","address_space_ref":"a",'
           '"memory_map_ref":"m"}}}')),
    ("absolute and dangling paths, and an empty net",
     block('"contents":{"port_connections":{"n":{"type":"soft","source":"/u/p","targets":["/gone/q"]},'
           '"e":{}},"interface_connections":{"c":{"source":"/x/S","target":"y/M"}}}')),
    ("a port map with its bounds unset", block('"boundary":{"interfaces":{"S":{"vlnv":"","mode":"slave",'
                                               '"port_maps":{"CLK":{"physical_port":"clk","logical_left":-1}}}}}')),
    ("the older name of a link parameter, in lower case",
     block('"boundary":{"noc_interfaces":{"m":{"mode":"nmu","protocol":"aximm","category":"pl"},'
           '"s":{"mode":"nsu","protocol":"aximm","category":"ddr","dest_id":-1,"editable":false}}},'
           '"contents":{"noc_connections":{"l":{"source":"m","target":"s","parameters":'
           '{"soc_boot":{"value":"true"}}}}}')),
]


def bmtool(tool, *args):
    return subprocess.run([tool, *args], capture_output=True, text=True, check=False)


def run_cases(check, tool, folder):
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    failed = 0

    def case_file(index, text):
        path = os.path.join(folder, "case%d.bm" % index)
        with open(path, "w", encoding="utf-8") as f:
            f.write(text)
        return path

    for index, (what, text) in enumerate(REFUSED + GAP):
        path = case_file(index, text)
        accepted = not errors_of(check, json.loads(text))
        read = bmtool(tool, "info", path).returncode == 0
        gap = (what, text) in GAP
        if read or accepted != gap:
            print("FAIL: %s: bmtool %s it, the schema %s it" % (
                what, "reads" if read else "refuses", "accepts" if accepted else "refuses"))
            failed += 1
    for index, (what, text) in enumerate(TOLERATED):
        path = case_file(100 + index, text)
        out = os.path.join(folder, "converted%d.bm" % index)
        errors = errors_of(check, json.loads(text))
        info = bmtool(tool, "info", path)
        convert = bmtool(tool, "convert", path, out)
        problems = errors + [r.stderr.strip() for r in (info, convert) if r.returncode != 0]
        if not problems:
            problems = errors_of(check, load(out))
        if problems:
            print("FAIL: %s: %s" % (what, "; ".join(problems)))
            failed += 1
    generated = os.path.join(folder, "generated.bm")
    result = bmtool(tool, "generate", generated, "--depth", "2", "--fanout", "3")
    failed += result.returncode != 0 or validate(check, [generated])[0] != 0
    print("%d refused, %d tolerated cases, %d failed" % (len(REFUSED) + len(GAP), len(TOLERATED), failed))
    return failed


def main():
    mode, args = (sys.argv[1], sys.argv[2:]) if len(sys.argv) > 1 else ("", [])
    if mode == "validate" and args:
        failed = validate(validator(), args)[0]
    elif mode == "written" and len(args) > 2 and args[1] == "--":
        failed = run_written(validator(), args[0], args[2:])
    elif mode == "cases" and len(args) == 2:
        failed = run_cases(validator(), *args)
    else:
        sys.exit(__doc__)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
