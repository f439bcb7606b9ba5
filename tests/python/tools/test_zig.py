"""What is changed in the compiler for other systems."""

from pathlib import Path

import pytest
from systems.zig import BY_ADDRESS, BY_NAME, compare_types_by_name


def test_only_the_comparison_of_types_changes_in_the_compiler_s_header(tmp_path: Path):
    header = tmp_path / "typeinfo"
    header.write_text(f"#  if WINDOWS\n{BY_NAME}#  else\n{BY_ADDRESS}#  endif\n", encoding="utf-8")
    compare_types_by_name(header)
    expected = f"#  if WINDOWS\n{BY_NAME}#  else\n{BY_NAME}#  endif\n"
    assert header.read_text(encoding="utf-8") == expected


def test_a_compiler_with_another_header_is_refused(tmp_path: Path):
    header = tmp_path / "typeinfo"
    header.write_text("class type_info;\n", encoding="utf-8")
    with pytest.raises(ValueError, match="is not as expected: how are types compared"):
        compare_types_by_name(header)
