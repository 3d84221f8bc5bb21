"""report.py PICTURE README RESULTS...

Reads RESULTS, the files that the benchmarks wrote, prints their table and draws PICTURE.
Replaces the text of README between the lines <!-- bench --> and <!-- /bench --> by the
rows of whole lives."""

import datetime
import json
import sys

GROUPS = ["life", "build", "finish", "finish kept", "write", "destroy", "growth", "threads", "lookup"]
STAGES = {"build": 1, "finish": 0.75, "write": 0.55, "destroy": 0.38}  # stage: opacity of its bars
COLOURS = {"next_steps": "#1d9a6c", "RapidJSON": "#5f86cf", "Boost.JSON": "#ab78bd", "nlohmann": "#c98f3d"}
OURS = "next_steps"
LEFT, BAR, LONGEST = 80, 13, 520  # margin, height and maximum length of the bars


def read(paths):
    """Returns {(group, name): {contender: (nanoseconds, allocations, peak bytes)}}, sorted by group."""
    rows = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            fastest = [b for b in json.load(file)["benchmarks"] if b.get("aggregate_name") == "fastest"]
        for entry in sorted(fastest, key=lambda b: b["family_index"]):
            group, name, contender = entry["run_name"].split("/")[:3]
            if group == "stages":
                for stage in GROUPS[1:6]:
                    counts = [entry[f"{stage} {what}"] for what in ("seconds", "allocations", "peak")]
                    rows.setdefault((stage, name), {})[contender] = (counts[0] * 1e9, *counts[1:])
            else:
                time = entry["cpu_time"] / entry.get("items", 1)
                rows.setdefault((group, name), {})[contender] = (time, entry.get("allocations"), entry.get("peak"))
    return dict(sorted(rows.items(), key=lambda row: GROUPS.index(row[0][0])))


def scaled(number, units):
    """Returns the number with three digits and its unit. Each unit is 1000 times the one before it."""
    for unit in units:
        if number < 999.5 or unit == units[-1]:
            return f"{number:.{2 if number < 9.995 else 1 if number < 99.95 else 0}f} {unit}"
        number /= 1000


def time_text(nanoseconds):
    return scaled(nanoseconds, ["ns", "µs", "ms", "s"])


def cell_text(row, contender):
    """Returns the time of next_steps; of another contender, its time divided by that of next_steps."""
    if contender not in row:
        return ""
    time, allocations, peak = row[contender]
    text = time_text(time) if contender == OURS else f"{time / row[OURS][0]:.2f} ×"
    return text if allocations is None else f"{text}, {allocations:.0f}, {scaled(peak / 1000, ['KB', 'MB'])}"


def table(rows):
    """Returns a Markdown table of {name: row}."""
    lines = [["", *COLOURS], ["---"] * 5]
    lines += [[name, *(cell_text(row, contender) for contender in COLOURS)] for name, row in rows.items()]
    widths = [max(len(line[column]) for line in lines) for column in range(5)]
    return "".join("| " + " | ".join(map(str.ljust, line, widths)) + " |\n" for line in lines)


def text(x, y, content, anchor="start"):
    return f'<text x="{x:.1f}" y="{y}" text-anchor="{anchor}">{content}</text>\n'


def box(x, y, width, colour, opacity=1):
    return f'<rect x="{x:.2f}" y="{y}" width="{width:.2f}" height="{BAR - 2}" fill="{colour}" fill-opacity="{opacity}"/>\n'


def bars(rows, answer, y):
    """Draws a bar for each contender. Its length is the time of the life; its parts are the stages."""
    lives = rows["life", answer]
    longest = max(life[0] for life in lives.values())
    drawn = text(LEFT - 10, y + 2 * BAR + 3, answer, "end")
    for contender, colour in COLOURS.items():
        time = lives[contender][0]
        stages = {stage: rows[stage, answer][contender][0] for stage in STAGES}
        x = LEFT
        for stage, opacity in STAGES.items():
            width = LONGEST * time / longest * stages[stage] / sum(stages.values())
            drawn += box(x, y, width, colour, opacity)
            x += width
        ratio = "" if contender == OURS else f", {time / lives[OURS][0]:.2f} ×"
        drawn += text(x + 6, y + BAR - 3, time_text(time) + ratio)
        y += BAR
    return drawn


def picture(rows):
    """Returns the SVG. Its text is grey, which is readable on white and on dark."""
    body = text(LEFT, 18, "Time of one answer's life; shorter is faster, each answer has its own scale")
    for at, (contender, colour) in enumerate(COLOURS.items()):
        body += box(LEFT + 95 * at, 30, 11, colour) + text(LEFT + 95 * at + 16, 40, contender)
    for at, (stage, opacity) in enumerate(STAGES.items()):
        body += box(LEFT + 400 + 68 * at, 30, 11, "#808080", opacity) + text(LEFT + 416 + 68 * at, 40, stage)
    y = 62
    for answer in [name for group, name in rows if group == "life"]:
        body += bars(rows, answer, y)
        y += 4 * BAR + 14
    return f"""<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 760 {y}" width="760" height="{y}" role="img"
  aria-labelledby="title description" font-family="sans-serif" font-size="11" fill="#787878">
<title id="title">How long an answer's life takes</title>
<desc id="description">Bars for six answers, which are built, finished, written and destroyed with {", ".join(COLOURS)}.
The figures are in the table of the README.</desc>
{body}</svg>
"""


def main(picture_path, readme_path, *results):
    rows = read(results)
    print("next_steps: the time of its fastest repetition. The others: their time divided by that of next_steps.\n"
          "Then the number of allocations and the maximum memory.\n")
    print(table({f"{group}: {name}": row for (group, name), row in rows.items()}), end="")
    with open(picture_path, "w", encoding="utf-8") as file:
        file.write(picture(rows))
    with open(readme_path, encoding="utf-8") as file:
        before, rest = file.read().split("<!-- bench -->\n")
        after = rest.split("<!-- /bench -->\n")[1]
    lives = table({name: row for (group, name), row in rows.items() if group == "life"})
    with open(readme_path, "w", encoding="utf-8") as file:
        file.write(f"{before}<!-- bench -->\nMeasured on {datetime.date.today()}:\n\n{lives}<!-- /bench -->\n{after}")


if __name__ == "__main__":
    main(*sys.argv[1:])
