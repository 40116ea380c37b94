"""The application under test is given as --hmi PROGRAM."""


def pytest_addoption(parser):
    parser.addoption("--hmi", required=True, help="the application")
