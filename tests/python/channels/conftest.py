"""The acquisitions that the tests of this folder edit."""

from support.trial_fixtures import rich_trial, trial

__all__ = ["rich_trial", "trial"]
