"""What stands in for the complex functions that Wine has not."""

from pathlib import Path

from systems.wine_complex import COMPLEX, DESCRIPTION, OURS, SOURCE, definition

DESCRIBED = """\
LIBRARY api-ms-win-crt-math-l1-1-0

EXPORTS

#include "func.def.in"
_Cbuild
cexp
F_NON_I386(log10f)
sin F_X86_ANY(DATA)
"""


def test_complex_functions_are_ours_and_all_others_the_system_s(tmp_path: Path):
    programs = tmp_path / "bin"
    description = tmp_path / DESCRIPTION
    description.parent.mkdir(parents=True)
    description.write_text(DESCRIBED, encoding="utf-8")
    head, exports, *lines = definition(programs).splitlines()
    assert (head, exports) == (f"LIBRARY {OURS}", "EXPORTS")
    assert {line for line in lines if "ours_" not in line} == {
        "_Cbuild=ucrtbase._Cbuild", "log10f=ucrtbase.log10f", "sin=ucrtbase.sin",
    }  # fmt: skip
    assert {line for line in lines if "ours_" in line} == {
        f"{name}=ours_{name}" for name in COMPLEX
    }


def test_each_is_defined_for_both_precisions():
    assert {"cabs", "cabsf", "cexp", "cexpf", "conj", "conjf", "cpow", "cpowf", "casinh"} <= COMPLEX
    assert len(COMPLEX) == 44
    for name in COMPLEX - {"cpow", "cpowf"}:
        assert name.endswith("f") or f", {name}, " in SOURCE
