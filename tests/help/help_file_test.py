"""Checks the built help file "ctell.chm" by reading it back with chmls (Free Pascal's CHM
reader): every topic, the contents, the index and every picture a topic shows are inside,
and every context number that the program opens (the template number of each page with a
Help button, from res/resource.h) maps to a topic that exists in the file.

    python3 help_file_test.py SOURCE_DIR ctell.chm
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE_DIR, HELP_FILE = sys.argv[1], sys.argv[2]

# The pages that open the help at their own topic: the wizard's collecting pages and the
# two pages of the options sheet.
HELP_PAGES = ["IDD_WIZARD_CAPACITY", "IDD_WIZARD_ENCRYPTION", "IDD_WIZARD_PASSWORD",
              "IDD_WIZARD_LOCATION", "IDD_OPTIONS_GENERAL", "IDD_OPTIONS_MONITOR"]


def chmls(*args, cwd=None):
    result = subprocess.run(["chmls", *args], cwd=cwd, capture_output=True, text=True,
                            check=True)
    return result.stdout


def names_in_file():
    listing = chmls("-n", "list", HELP_FILE)
    return {line.strip() for line in listing.splitlines() if line.startswith("/")}


def resource_numbers():
    with open(os.path.join(SOURCE_DIR, "res", "resource.h")) as header:
        return {name: int(number) for name, number in
                re.findall(r"#define\s+(\w+)\s+(\d+)", header.read())}


def project_section(name):
    with open(os.path.join(SOURCE_DIR, "help", "ctell.hhp")) as project:
        text = project.read()
    body = re.search(r"^\[" + name + r"\]\n(.*?)(?=^\[|\Z)", text, re.M | re.S).group(1)
    return [line.strip() for line in body.splitlines() if line.strip()]


class HelpFileTest(unittest.TestCase):
    def test_every_topic_contents_and_index_are_inside(self):
        names = names_in_file()
        for topic in project_section("FILES"):
            self.assertIn("/" + topic, names)
        for special in ("/contents.hhc", "/index.hhk", "/#IVB", "/#STRINGS"):
            self.assertIn(special, names)

    def test_every_picture_a_topic_shows_is_inside(self):
        names = names_in_file()
        topics = os.path.join(SOURCE_DIR, "help", "topics")
        pictures = set()
        for topic in os.listdir(topics):
            with open(os.path.join(topics, topic)) as page:
                pictures.update(re.findall(r'src="\.\./images/([^"]+)"', page.read()))
        self.assertTrue(pictures)
        for picture in pictures:
            self.assertIn("/images/" + picture, names)

    def test_every_help_page_number_maps_to_a_topic_inside(self):
        names = names_in_file()
        numbers = resource_numbers()
        # chmls writes the map beside the file it reads, so it reads a copy.
        with tempfile.TemporaryDirectory() as scratch:
            copy = os.path.join(scratch, "help.chm")
            shutil.copyfile(HELP_FILE, copy)
            chmls("extractalias", copy)
            with open(os.path.join(scratch, "help.ali")) as aliases:
                mapped = {int(number): topic.strip() for number, topic in
                          re.findall(r"helpid(\d+)=(\S+)", aliases.read())}
        for page in HELP_PAGES:
            number = numbers[page]
            self.assertIn(number, mapped, page)
            self.assertIn(mapped[number], names, page)

    def test_the_project_map_uses_the_resource_numbers(self):
        numbers = resource_numbers()
        defines = dict(re.findall(r"#define\s+(\w+)\s+(\d+)", "\n".join(project_section("MAP"))))
        self.assertEqual(sorted(defines), sorted(HELP_PAGES))
        for name, number in defines.items():
            self.assertEqual(int(number), numbers[name], name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
