"""The Python module over the block model: a real flow, the lifetimes of its objects, and the object
caches seen through the interpreter."""
import os
import subprocess
import sys
import textwrap

import pytest

import blockmodel as bm

EXAMPLES = os.environ.get("MZ_EXAMPLES_DIR", os.path.join(os.path.dirname(__file__), "../../../examples"))
NOC = os.path.join(EXAMPLES, "noc.bm")


def test_flow_read_edit_check_write_and_read_back(tmp_path):
    top = bm.read(NOC)
    before = len(top.find_noc_interfaces())
    cpu = top.find_sub_block("/cpu")
    nmu = cpu.create_noc_interface("M_AXI_extra")
    nmu.mode, nmu.protocol, nmu.category = "nmu", "aximm", "pl"
    link = top.connect_noc("cpu/M_AXI_extra", "ddr/S_AXI_nsu")
    assert (link.source, link.target) == (nmu, top.find_noc_interface("/ddr/S_AXI_nsu"))
    assert link.is_primary and "READ_BANDWIDTH" in link.parameters
    passed, findings = top.validate_all()
    assert not passed and all(f.severity in ("ERROR", "WARNING", "INFO") for f in findings)
    assert str(findings[0]).startswith(findings[0].severity + ": [" + findings[0].id + "] ")
    assert top.check() == []
    out = tmp_path / "out.bm"
    bm.write(top, str(out))
    again = bm.read(str(out))
    assert len(again.find_noc_interfaces()) == before + 1
    assert again.find_noc_interface("/cpu/M_AXI_extra").mode == "nmu"
    for writer, name in ((top.write_stub, "cpu.v"), (top.write_wrapper, "cpu.sv"), (top.write_constraints, "noc.tcl")):
        writer(str(tmp_path / name))
        assert (tmp_path / name).stat().st_size > 0
    paths = top.noc_paths()
    assert any(p["nmu"] == nmu and p["complete"] for p in paths)


def test_refusals_raise_with_the_reason(tmp_path):
    with pytest.raises(OSError, match="could not read"):
        bm.read(str(tmp_path / "missing.bm"))
    top = bm.read(NOC)
    with pytest.raises(ValueError):
        top.connect_noc("ddr/S_AXI_nsu", "cpu/M_AXI_nmu")
    with pytest.raises(ValueError, match="not a NoC mode"):
        top.noc_interfaces()[0].mode = "sideways"
    with pytest.raises(ValueError, match="refuses sub-block"):
        top.create_sub_block("a/b", "m")
    with pytest.raises(OSError):
        bm.write(top, str(tmp_path / "no" / "such" / "dir.bm"))


# Each cached kind: how to make one under a block, and how its owner destroys it.
CACHED_KINDS = [
    ("block", lambda b: b.create_sub_block("u", "m"), lambda b: b.clear_sub_blocks()),
    ("address space", lambda b: b.create_addr_space("s"), lambda b: b.remove_addr_space("s")),
    ("address block", lambda b: b.create_memory_map("m").create_addr_block("r"), lambda b: b.clear_memory_maps()),
    ("address assignment", lambda b: b.create_addr_assign("a"), lambda b: b.clear_addr_assigns()),
    ("NoC interface", lambda b: b.create_noc_interface("n"), lambda b: b.clear_noc_interfaces()),
    ("NoC connection", lambda b: b.connect_noc("x", "y", force=True), lambda b: b.clear_noc_connections()),
]


@pytest.mark.parametrize("kind,make,destroy", CACHED_KINDS, ids=[k[0] for k in CACHED_KINDS])
def test_every_object_of_a_dead_native_raises_reference_error(kind, make, destroy):
    top = bm.create_top_block("t")
    first = make(top)
    second = [o for o in (top.sub_blocks() + top.addr_spaces() + top.addr_assigns() + top.noc_interfaces() +
                          top.noc_connections()) if o == first] or [first]
    assert first.is_valid and second[0] == first and hash(second[0]) == hash(first)
    assert kind != "block" or second[0] is not first  # two script objects for one native
    destroy(top)
    for obj in (first, second[0]):
        assert not obj.is_valid
        with pytest.raises(ReferenceError, match="This " + kind + " no longer exists"):
            obj.name if kind != "block" else obj.path
    assert "destroyed" in repr(first)


def test_objects_keep_their_tree_and_die_with_a_dropped_detached_tree():
    top = bm.create_top_block("t")
    leaf = top.create_sub_block("u", "m").create_sub_block("v", "m")
    iface = leaf.create_noc_interface("n")
    del top
    assert iface.path == "/u/v/n" and leaf.top.owns_tree
    root = leaf.top
    detached = root.remove_sub_block("u")
    assert detached.owns_tree and detached.path == "/" and leaf.path == "/v"
    del detached
    with pytest.raises(ReferenceError):
        leaf.path
    with pytest.raises(ReferenceError):
        iface.mode


def test_children_without_cache_are_found_again_on_each_use():
    top = bm.create_top_block("t")
    port = top.create_port("data", "out", 7, 0)
    mm = top.create_memory_map("m")
    assert (port.width, port.direction, port.path) == (8, "out", "/data")
    top.remove_port("data")
    with pytest.raises(ReferenceError, match="port 'data' no longer exists"):
        port.width
    top.clear_memory_maps()
    with pytest.raises(ReferenceError, match="memory map"):
        mm.addr_blocks()
    space = top.create_addr_space("s")
    seg = space.create_segment("lo", bm.Aperture(0, "64K"))
    top.clear_addr_spaces()
    with pytest.raises(ReferenceError, match="address space"):
        seg.aperture


def test_a_corrupt_pair_is_reported_and_the_walk_goes_on():
    top = bm.create_top_block("t")
    top.create_sub_block("u", "m")
    a, b = top.sub_block("u"), top.sub_block("u")
    bm._unlink(a)
    top.clear_sub_blocks()
    assert "py_native_cache<> corrupt" in bm._cache_errors()
    assert not a.is_valid and not b.is_valid


def test_destruction_during_interpreter_exit_leaves_the_maps_alone():
    # Registered before the module's own atexit function, so it runs after it: the interpreter is then
    # finalising, and the tree it drops must not reach the caches.
    script = textwrap.dedent("""
        import atexit
        holder = []
        def drop():
            before = blockmodel._cache_state()
            holder.clear()
            print("before", before)
            print("after", blockmodel._cache_state())
        atexit.register(drop)
        import blockmodel
        top = blockmodel.create_top_block("t")
        keep = [top.create_sub_block("u%d" % i, "m") for i in range(3)]
        holder.append(top)
        del top
        holder.append(keep)
    """)
    run = subprocess.run([sys.executable, "-c", script], capture_output=True, text=True, check=True)
    before = run.stdout.split("before ")[1].split("\n")[0]
    after = run.stdout.split("after ")[1].split("\n")[0]
    assert "'exiting': True" in after
    assert "'observers': False" in after and "'py2n': 4" in after and "'py2n': 4" in before


ADDR_CASES = [
    (bm.AddrValue(0x1000) + 0x1000, 0x2000),
    (bm.AddrValue("4K") * 2, 0x2000),
    (bm.AddrValue(0) - 1, 2**128 - 1),
    (bm.AddrValue(2**127) << 1, 0),
    (bm.AddrValue(0xF0) >> 4, 0xF),
    (bm.AddrValue(7) // 2, 3),
    (bm.AddrValue(7) / 0, 0),
    (bm.AddrValue(0xFF) & "0x0F" | 0x100 ^ 1, 0x10F),
    (~bm.AddrValue(0), 2**128 - 1),
]


@pytest.mark.parametrize("value,expected", ADDR_CASES)
def test_addr_value_arithmetic_wraps_at_128_bits(value, expected):
    assert int(value) == expected and value == expected


def test_addr_values_and_apertures_print_and_compare():
    assert str(bm.AddrValue(0x12345678)) == "0x1234_5678" and int(bm.AddrValue("1M")) == 1 << 20
    assert bm.AddrValue(1) < 2 < bm.AddrValue(3) and {bm.AddrValue(5), bm.AddrValue("5")} == {bm.AddrValue(5)}
    ap = bm.Aperture(0x1000, "4K")
    assert (str(ap), int(ap.high), 0x1FFF in ap, 0x2000 in ap) == ("0x1000[4K]", 0x1FFF, True, False)
    assert ap.overlaps(bm.Aperture("0x1800:0x27FF")) and not ap.overlaps(bm.Aperture(0x2000, 16))
    assert str(ap & bm.Aperture(0x1800, "4K")) == str(bm.Aperture(0x1800, "2K"))
    with pytest.raises(ValueError):
        bm.AddrValue(-1)
    with pytest.raises(ValueError):
        bm.Aperture("nonsense")
