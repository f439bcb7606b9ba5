"""The acquisitions that the tests of this folder edit."""

from support.trial_fixtures import any_trial, rich_trial, trial

__all__ = ["any_trial", "rich_trial", "trial"]
