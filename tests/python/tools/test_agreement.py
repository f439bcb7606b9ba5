"""Systems are compared file by file, and a difference is named by its place."""

import numpy as np
from run_tests import Tally
from support.fingerprints import digest
from support.random_files import random_file
from systems.agreement import compare, differences

HERE = {"a.c3d": {"read": {"Markers": "1", "Events": "2"}, "written": "3"}}


def test_equal_systems_pass_for_each_file():
    assert compare({**HERE, "b.c3d": {}}, {**HERE, "b.c3d": {}}, "there") == Tally(passed=2)


def test_a_difference_is_named_by_its_place(capsys):
    there = {"a.c3d": {"read": {"Markers": "1", "Events": "x"}, "written": "y"}}
    assert compare(HERE, there, "there") == Tally(failed=1)
    assert capsys.readouterr().out == "there, a.c3d: /read/Events, /written\n"


def test_a_file_that_one_system_does_not_tell_of_is_a_difference():
    assert compare(HERE, {}, "there") == Tally(failed=1)
    assert list(differences({"error": "no"}, {"written": "1"})) == ["/error", "/written"]


def test_a_digest_tells_numbers_that_are_equal_but_not_the_same():
    zeros = np.zeros(2)
    assert digest(zeros) == digest(zeros.copy())
    for other in (-zeros, zeros.astype(np.float32), zeros.reshape(2, 1), [0.0, 0.0]):
        assert digest(zeros) != digest(other)
    assert digest({"a": 1, "b": 2}) != digest({"b": 2, "a": 1})
    assert digest(["ab", "c"]) != digest(["a", "bc"])


def test_a_number_gives_the_same_file_each_time():
    assert random_file(7).to_bytes() == random_file(7).to_bytes()
    assert random_file(7).to_bytes() != random_file(8).to_bytes()
