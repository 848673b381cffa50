"""Quizzes are played from the first question to the score."""

import unittest

from browser import BrowserTest

# Question, right answers, wrong answers, remark: as the page list of the example site has them.
QUESTIONS = [
    ("In which year was the Custom House clock set going?", {"1826"}, {"1688", "1867"},
     "The lighthouse took ten years more."),
    ("What was thought of a ship without a figurehead?", {"She was blind"},
     {"She was fast", "She couldn't be sold"}, ""),
    ("What does the keeper's stroke in the logbook mean?", {"A watch changed"},
     {"A ship went by", "The ink ran out"}, ""),
    ('Who is "Number 3"?', {"The pilot cutter Petrel"}, {"The tug Ondine", "The ferry Quill"}, ""),
    ("Which of these can you board today?", {"The Curlew", "The second Ondine"},
     {"The Constance", "The Good Hope"}, "They lie at the museum quay."),
    ("How long is a pendulum that swings once each way in two seconds?", {"About one metre"},
     {"About half a metre", "About two metres"}, ""),
]


class ScriptedQuiz(BrowserTest):
    def start(self):
        self.open("quiz.htm")
        self.assertEqual(self.element("#quizbox").text, "")
        self.click_link()

    def click_link(self):
        """The link's script runs some time after the click."""
        self.link("QUIZ TIME: School quiz").click()
        self.wait_for("no first question",
                      lambda: self.shown()["question"].startswith("1 of "))

    def shown(self):
        """What the quiz shows, asked for at once."""
        return self.script("""
            const words = css => [...document.querySelectorAll('#quizbox ' + css)]
                .map(element => element.innerText);
            return {question: words('legend').join(), choices: words('fieldset button').sort(),
                open: words('fieldset button:enabled').length, right: words('button.right').sort(),
                wrong: words('button.wrong'), said: words('p[role=status]').join(),
                next: words('> button')};""")

    def press(self, words):
        self.driver.find_element("xpath", f'//*[@id="quizbox"]//button[.="{words}"]').click()

    def play_question(self, number, answer_right):
        question, right, wrong, remark = QUESTIONS[number]
        asked = {"question": f"{number + 1} of {len(QUESTIONS)}: {question}",
                 "choices": sorted(right | wrong), "open": len(right | wrong),
                 "right": [], "wrong": [], "said": "", "next": []}
        self.assertEqual(self.shown(), asked)

        pressed = min(right if answer_right else wrong)
        self.press(pressed)
        marked_right = [words + " (right)" for words in right]
        marked_wrong = [] if answer_right else [pressed + " (wrong)"]
        unmarked = [words for words in wrong if words != pressed]
        following = "Show my score" if number + 1 == len(QUESTIONS) else "Next question"
        self.assertEqual(self.shown(), asked | {
            "choices": sorted(marked_right + marked_wrong + unmarked), "open": 0,
            "right": sorted(marked_right), "wrong": marked_wrong,
            "said": f"{'Right!' if answer_right else 'Not quite.'} {remark}".strip(),
            "next": [following]})
        self.press(following)

    def play(self, answers):
        for number, answer_right in enumerate(answers):
            self.play_question(number, answer_right)

    def score(self):
        shown = self.shown()
        self.assertEqual((shown["choices"], shown["next"]), ([], ["Once more"]))
        return shown["said"]

    def test_a_whole_quiz_right_and_wrong(self):
        self.start()
        self.play([True, False, True, True, False, True])
        self.assertEqual(self.score(), "4 of 6 right.")
        self.assertEqual(self.console_errors(), [])

    def test_once_more_begins_at_nought(self):
        self.start()
        self.play([False] * 6)
        self.assertEqual(self.score(), "0 of 6 right.")
        self.press("Once more")
        self.play([True] * 6)
        self.assertEqual(self.score(), "6 of 6 right.")

    def test_the_link_starts_anew_in_the_middle(self):
        self.start()
        self.play_question(0, True)
        self.click_link()
        self.play([False, True, True, False, False, False])
        self.assertEqual(self.score(), "2 of 6 right.")


class SelfCheck(BrowserTest):
    """Radio buttons that write what they think of an answer into the box below."""

    def feedback(self, number):
        return self.element(f"textarea[name=feedback{number}]").get_property("value")

    def choose(self, number, which):
        self.elements(f"input[type=radio][name='{number}']")[which].click()

    def test_answers_speak_in_the_box_of_their_question(self):
        self.open("quiz.htm")
        self.assertEqual([self.feedback(n) for n in (1, 2, 3)], ["", "", ""])
        self.choose(1, 0)
        self.assertEqual(self.feedback(1), "No. Coming in it\u2019s on the left; turn your boat "
                         "round and think again.")
        self.choose(1, 1)
        self.assertEqual(self.feedback(1),
                         "Yes! What is to port on the way in is to starboard on the way out.")
        self.choose(2, 0)
        self.assertEqual(self.feedback(2), 'The harbour master says: "Then take a good book with '
                         'you, it\u2019s a long way down."')
        self.choose(3, 2)
        self.assertEqual(self.feedback(3), "Only on the Curlew.")
        self.assertEqual(self.feedback(1)[:4], "Yes!", "the other boxes keep their words")
        self.assertEqual(self.console_errors(), [])

    def test_one_answer_a_question(self):
        self.open("quiz.htm")
        for which in (0, 1):
            self.choose(2, which)
            self.assertEqual(
                [b.is_selected() for b in self.elements("input[type=radio][name='2']")],
                [which == 0, which == 1])

    def test_questions_and_headings(self):
        self.open("quiz.htm")
        self.assertEqual(
            [b.text for b in self.elements("form p b")],
            ["Question: You leave the harbour. On which side is the lighthouse?",
             "Question: The storm flag is up. What do you do?",
             "And a hard one. The glass is rising. What does that mean?"])


if __name__ == "__main__":
    unittest.main()
