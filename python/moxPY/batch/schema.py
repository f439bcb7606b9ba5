"""One schema for the tables of many files."""

from __future__ import annotations

from typing import TYPE_CHECKING, Any

from ..trial.extras import require

if TYPE_CHECKING:
    import pyarrow  # type: ignore[import-untyped, import-not-found, unused-ignore]


class Misfit(TypeError):
    """A table does not go together with those before it."""


class Schema:
    """The columns of all tables so far: those of the first one, and then what others added."""

    def __init__(self) -> None:
        self._arrow = require("pyarrow")
        self.fields: pyarrow.Schema | None = None

    def include(self, other: pyarrow.Schema) -> bool:
        """Let the columns of a table in. Whether that changed the schema.

        Raises
        ------
        Misfit
            A column holds something that does not go together with what it held so far.
        """
        if self.fields is None or other.equals(self.fields):
            changed = self.fields is None
            self.fields = other
            return changed
        arrow = self._arrow
        try:
            unified = arrow.unify_schemas([self.fields, other], promote_options="permissive")
        except (arrow.ArrowInvalid, arrow.ArrowTypeError):
            raise Misfit(_misfit(arrow, self.fields, other)) from None
        unified = self._with_nulls(unified, other)
        changed = not unified.equals(self.fields)
        self.fields = unified
        return changed

    def _with_nulls(self, unified: pyarrow.Schema, other: pyarrow.Schema) -> pyarrow.Schema:
        """A column that one of both lacks is null there."""
        assert self.fields is not None
        for schema in (self.fields, other):
            lacking = set(unified.names) - set(schema.names)
            for name in lacking:
                place = unified.get_field_index(name)
                unified = unified.set(place, unified.field(place).with_nullable(True))
        return unified

    def conform(self, table: pyarrow.Table) -> pyarrow.Table:
        """The table with all columns, those that it lacks being null."""
        assert self.fields is not None
        if table.schema.equals(self.fields):
            return table
        columns = [self._column(table, field) for field in self.fields]
        return self._arrow.Table.from_arrays(columns, schema=self.fields)

    def _column(self, table: pyarrow.Table, field: Any) -> Any:
        if table.schema.get_field_index(field.name) >= 0:
            return table.column(field.name).cast(
                field.type, safe=False
            )  # large integers are rounded
        return self._arrow.nulls(table.num_rows, field.type)


def _misfit(arrow: Any, before: pyarrow.Schema, now: pyarrow.Schema) -> str:
    for field in now:
        place = before.get_field_index(field.name)
        if place < 0:
            continue
        pair = [arrow.schema([before.field(place)]), arrow.schema([field])]
        try:
            arrow.unify_schemas(pair, promote_options="permissive")
        except (arrow.ArrowInvalid, arrow.ArrowTypeError):
            types = f"{field.type}, in the files before it is {before.field(place).type}"
            return f"the column '{field.name}' is {types}"
    return "the columns do not fit those of the files before"
