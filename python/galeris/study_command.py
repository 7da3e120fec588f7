"""galeris-study: the studies of galeris.study from the command line, written to CSV.

Exit status: 0 done, 3 bad input (nothing is written then).
"""
import argparse
import functools
import os
import sys
import tempfile

from galeris import study

EXIT_BAD_INPUT = 3


class _Parser(argparse.ArgumentParser):
    def error(self, message):
        self.print_usage(sys.stderr)
        raise study.StudyError(message)


def _numbers(text):
    try:
        return [int(n) for n in text.split(",") if n.strip()]
    except ValueError:
        raise argparse.ArgumentTypeError("a list of airway numbers, e.g. 12,40") from None


def _range(text):
    parts = text.split(":")
    try:
        start, stop, count = float(parts[0]), float(parts[1]), int(parts[2])
    except (ValueError, IndexError):
        raise argparse.ArgumentTypeError("FROM:TO:COUNT, e.g. 0.01:0.5:20") from None
    if len(parts) != 3:
        raise argparse.ArgumentTypeError("FROM:TO:COUNT, e.g. 0.01:0.5:20")
    return start, stop, count


def _parser():
    common = argparse.ArgumentParser(add_help=False)
    common.add_argument("network", help="the network file (.sim)")
    common.add_argument("-o", "--output", help="the CSV file to write (default: standard output)")
    common.add_argument("--watch", type=_numbers, default=[], metavar="NO,NO,...",
                        help="airways whose figures become columns")
    common.add_argument("--plot", metavar="FILE.png", help="draw the study's chart")
    common.add_argument("--method", choices=("hardy-cross", "newton"), default="hardy-cross")
    common.add_argument("--workers", type=int, help="local workers (default: one per core; "
                        "0 runs in this process)")
    common.add_argument("--scheduler", metavar="tcp://HOST:PORT",
                        help="an existing Dask scheduler to send the tasks to")
    common.add_argument("--home", help="the program folder (Defaults.dat, fansdata.dat)")
    parser = _Parser(prog="galeris-study", description="Scenario studies of a Galeris network.")
    sub = parser.add_subparsers(dest="study", required=True, parser_class=_Parser)
    p = sub.add_parser("outage", parents=[common], help="each fan stopped in turn")
    p.add_argument("--closed", action="store_true",
                   help="block the stopped fan's airway, as a non-return damper would")
    p = sub.add_parser("fire", parents=[common], help="smoke from each source airway")
    p.add_argument("--sources", type=_numbers, help="source airways (default: every airway "
                   "carrying flow)")
    p = sub.add_parser("sweep", parents=[common], help="one airway's resistance swept")
    p.add_argument("--airway", type=int, required=True)
    p.add_argument("--resistance", type=_range, required=True, metavar="FROM:TO:COUNT")
    p = sub.add_parser("montecarlo", parents=[common], help="resistances drawn at random")
    p.add_argument("--sigma", type=float, default=0.1,
                   help="the spread of the log-normal factor (default 0.1)")
    p.add_argument("--samples", type=int, default=100)
    p.add_argument("--seed", type=int, default=1)
    return parser


def _run(args, client):
    options = dict(method=args.method, home=args.home, workers=args.workers, client=client,
                   progress=sys.stderr)
    if args.study == "outage":
        return study.outage(args.network, args.watch, closed=args.closed, **options)
    if args.study == "fire":
        return study.fire(args.network, args.watch, sources=args.sources, **options)
    if args.study == "sweep":
        start, stop, count = args.resistance
        return study.sweep(args.network, args.airway, start, stop, count, args.watch, **options)
    return study.montecarlo(args.network, args.sigma, args.samples, args.seed, args.watch,
                            **options)


def _write_atomically(path, write):
    """Writes through a scratch file beside path, so that a failure leaves no half file."""
    folder = os.path.dirname(os.path.abspath(path))
    fd, scratch = tempfile.mkstemp(dir=folder, prefix=".galeris-study-",
                                   suffix=os.path.splitext(path)[1])
    os.close(fd)
    try:
        write(scratch)
        os.replace(scratch, path)
    except BaseException:
        os.unlink(scratch)
        raise


def _connect(address):
    if not address:
        return None
    from distributed import Client
    try:
        return Client(address, timeout=10)
    except OSError as e:
        raise study.StudyError("cannot reach the scheduler at %s: %s" % (address, e)) from None


def main(argv=None):
    try:
        args = _parser().parse_args(argv)
        for path in (args.output, args.plot):
            if path and not os.path.isdir(os.path.dirname(os.path.abspath(path))):
                raise study.StudyError("no folder for %s" % path)
        client = _connect(args.scheduler)
        try:
            table = _run(args, client)
        finally:
            if client is not None:
                client.close()
    except study.StudyError as e:
        print("galeris-study: %s" % e, file=sys.stderr)
        return EXIT_BAD_INPUT
    except ValueError as e:
        print("galeris-study: %s" % e, file=sys.stderr)
        return EXIT_BAD_INPUT
    # Flows are singles: seven significant digits say all they hold.
    write_csv = functools.partial(table.to_csv, float_format="%.7g")
    if args.output:
        _write_atomically(args.output, write_csv)
    else:
        write_csv(sys.stdout)
    if args.plot:
        from galeris import study_chart
        _write_atomically(args.plot, lambda p: study_chart.draw(args.study, table, p))
    return 0


if __name__ == "__main__":
    sys.exit(main())
