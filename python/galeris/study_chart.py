"""The chart of each study, drawn with matplotlib into a PNG: bars per outage, histograms per
watched airway, flow against resistance, arrival times per fire source."""
import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402


def _flow_columns(table):
    return [c for c in table.columns if c.startswith("flow_")]


def draw(kind, table, path):
    flows = _flow_columns(table)
    fig, ax = plt.subplots(figsize=(8, 5))
    if kind == "outage":
        labels = ["base" if no == 0 else str(no) for no in table.index]
        ax.bar(labels, table["total_airflow"], color="tab:blue")
        ax.set_xlabel("fan airway stopped")
        ax.set_ylabel("total airflow (m3/s)")
    elif kind == "sweep":
        for c in flows or ["total_airflow"]:
            ax.plot(table.index, table[c], marker="o", label=c.replace("_", " "))
        ax.set_xlabel("resistance (Ns2/m8)")
        ax.set_ylabel("flow (m3/s)")
        ax.legend()
    elif kind == "montecarlo":
        for c in flows or ["total_airflow"]:
            ax.hist(table[c].dropna(), bins=20, alpha=0.6, label=c.replace("_", " "))
        ax.set_xlabel("flow (m3/s)")
        ax.set_ylabel("samples")
        ax.legend()
    else:
        arrivals = [c for c in table.columns if c.startswith("arrival_")]
        for c in arrivals:
            ax.bar([str(no) for no in table.index], table[c].fillna(0), alpha=0.6,
                   label=c.replace("_", " "))
        ax.set_xlabel("source airway")
        ax.set_ylabel("arrival (s)")
        if arrivals:
            ax.legend()
    ax.set_title("Galeris %s study" % kind)
    fig.tight_layout()
    fig.savefig(path, format="png")
    plt.close(fig)
