from run_tests import Tally, tally_of

REPORT = """\
<testsuites><testsuite>
  <testcase name="passes"/>
  <testcase name="fails"><failure message="1 != 2"/></testcase>
  <testcase name="breaks"><error message="no such fixture"/></testcase>
  <testcase name="waits"><skipped/></testcase>
</testsuite></testsuites>
"""


def test_report_is_counted(tmp_path):
    report = tmp_path / "report.xml"
    report.write_text(REPORT)
    assert tally_of(report, 1) == Tally(passed=1, failed=2, skipped=1)


def test_run_without_a_report_counts_as_a_failure(tmp_path):
    assert tally_of(tmp_path / "absent.xml", 139) == Tally(failed=1)


def test_crash_after_the_report_counts_as_a_failure(tmp_path):
    report = tmp_path / "report.xml"
    report.write_text("<testsuite><testcase name='passes'/></testsuite>")
    assert tally_of(report, 139) == Tally(passed=1, failed=1)
