"""The one form in which benchmark results are kept and printed."""
import dataclasses
import typing


@dataclasses.dataclass
class Row:
    name: str
    ours: float
    unit: str
    peer: typing.Optional[str] = None
    peer_figure: typing.Optional[float] = None
    more_is_better: bool = True

    @property
    def ratio(self):
        """Above 1 when we are ahead; None without a peer."""
        if self.peer is None:
            return None
        return self.ours / self.peer_figure if self.more_is_better else self.peer_figure / self.ours


_LAYOUT = "%-10s %-16s %12s %-6s %-14s %12s %8s"


def heading():
    return _LAYOUT % ("group", "name", "ours", "unit", "peer", "peer figure", "ratio")


def as_table(group, row):
    peer = ("", "", "") if row.peer is None else (
        row.peer, "%.4g" % row.peer_figure, "%.2f" % row.ratio)
    return (_LAYOUT % (group, row.name, "%.4g" % row.ours, row.unit, *peer)).rstrip()


def as_json_object(group, row):
    return {"group": group, "name": row.name, "ours": row.ours, "unit": row.unit,
            "peer": row.peer, "peer_figure": row.peer_figure, "ratio": row.ratio}
