# Says where the project's papers do not tell the truth about it, as far as a program can see: check.py ROOT
# SPDX-FileCopyrightText: 2026 The TideLoft developers
# SPDX-License-Identifier: MIT
import sys

import commands
import figures
import guides
import links
import outline
from project import Project

CHECKS = [links.check_links, links.check_files, links.check_tests,
          commands.check_commands, commands.check_lone_options, commands.check_control_commands, commands.check_cmake,
          commands.check_preset_table, commands.check_manual,
          guides.check_structure, guides.check_messages, guides.check_english_messages,
          guides.check_network_messages, guides.check_warnings, guides.check_screen_words, guides.check_left_out,
          figures.check_figures, figures.check_file_names,
          figures.check_installed, figures.check_metrics, outline.check_outline]


def main():
    project = Project(sys.argv[1])
    papers = project.papers()
    problems = [problem for check in CHECKS for problem in check(project)]
    if len(papers) < 9:
        problems.append(f"only {len(papers)} papers were found below {project.root}")
    for problem in problems:
        print(problem)
    print(f"{len(papers)} papers, {len(CHECKS)} checks, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
