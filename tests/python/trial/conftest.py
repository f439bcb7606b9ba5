"""The acquisitions that the tests of this folder start from."""

from support.trial_fixtures import any_trial, rich_trial

__all__ = ["any_trial", "rich_trial"]
