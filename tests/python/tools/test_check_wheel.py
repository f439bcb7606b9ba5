import zipfile

from check_wheel import TYPES, missing_types


def test_a_wheel_without_the_stub_is_found(tmp_path):
    wheel = tmp_path / "moxPY.whl"
    with zipfile.ZipFile(wheel, "w") as archive:
        for name in TYPES - {"_moxPY/__init__.pyi"}:
            archive.writestr(name, "")
    assert missing_types(wheel) == ["_moxPY/__init__.pyi"]


def test_a_wheel_with_all_types_is_good(tmp_path):
    wheel = tmp_path / "moxPY.whl"
    with zipfile.ZipFile(wheel, "w") as archive:
        for name in [*TYPES, "_moxPY/plugins/c3d.so"]:
            archive.writestr(name, "")
    assert missing_types(wheel) == []
