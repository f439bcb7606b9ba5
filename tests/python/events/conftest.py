"""The acquisitions that the tests of this folder edit."""

from support.trial_fixtures import any_trial

__all__ = ["any_trial"]
