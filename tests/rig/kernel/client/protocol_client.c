/* SPDX-License-Identifier: MIT
 *
 * Asks the board behind a hidraw node what docs/protocol.md describes, and compares the answers with what stands there.
 * It shares no line with the programs nor with the simulator, so that a mistake that those two have in common is seen.
 *
 *   protocol_client NODE            a board without report ids
 *   protocol_client NODE numbered   a board that takes commands in report 1 and answers in report 2
 *
 * The board has the identity 4133, the factory's settings and the serial number 4B535401. Everything in it may be
 * changed. Exit status: how many answers were wrong, 99 when the node cannot be opened.
 */
#include <fcntl.h>
#include <poll.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

enum {
  ELEMENTS = 1028, /* of a command report */
  ANSWER = 2,      /* bytes of an answer report */
  ARGUMENTS = 16,  /* the most elements that a row of the table gives; the rest are 0 */
  ANSWERS = 9,     /* the most answers that a command has */
  PATIENCE = 3000, /* milliseconds that an answer may take */
  OUTPUT_ID = 1,
  INPUT_ID = 2
};

struct exchange {
  const char* name;
  unsigned char command[ARGUMENTS];
  int answers;
  unsigned char expected[ANSWERS * ANSWER];
};

/* In this order: each row may rest on what the rows before it left in the board. Sums are worked out by hand. */
static const struct exchange exchanges[] = {
    {"GetID", {3}, 1, {0x10, 0x25}}, /* 4133 */
    {"GetSN", {1}, 2, {0x4B, 0x53, 0x54, 0x01}},
    {"GetAccParam, factory values", {41}, 3, {180, 2, 10, 50, 125, 13}},
    {"SetAccParam, other values", {42, 99, 3, 11, 51, 126, 14}, 1, {10, 10}},
    {"GetAccParam, other values", {41}, 3, {99, 3, 11, 51, 126, 14}},
    {"ClearFlash", {10}, 1, {10, 10}},
    {"GetAccParam, wiped by the erase", {41}, 3, {255, 255, 255, 255, 255, 255}},
    {"SetAccParam, factory values", {0x2A, 0xB4, 0x02, 0x0A, 0x32, 0x7D, 0x0D}, 1, {10, 10}},
    {"CheckCRC, two erased bytes", {30, 0, 0, 0, 0, 0, 2}, 1, {0x01, 0xFE}}, /* 255 + 255 = 510 */
    {"WriteLess, 3 bytes to 512", {0x15, 0, 2, 0, 0, 0, 3, 0x7D, 0x42, 0x3E}, 1, {0x00, 0xFD}},
    {"CheckCRC, the same 3 bytes", {30, 0, 2, 0, 0, 0, 3}, 1, {0x00, 0xFD}},
    {"CheckCRC, one byte more", {30, 0, 2, 0, 0, 0, 4}, 1, {0x01, 0xFC}}, /* 253 + 255 = 508 */
    {"WriteLess, bits that are 0 stay 0", {21, 0, 2, 0, 0, 0, 1, 0x82}, 1, {0x00, 0x82}},
    {"CheckCRC, 7D and 82 have no bit in common", {30, 0, 2, 0, 0, 0, 1}, 1, {0, 0}},
    {"Write1k, zeros to 1024", {20, 0, 4, 0}, 1, {0, 0}},
    {"CheckCRC, the zeros and one byte behind", {30, 0, 4, 0, 0, 4, 1}, 1, {0x00, 0xFF}},
    {"GetACC, lying still", {40}, 2, {0, 0, 21, 0}},
    {"GetLEDConfig, factory values", {60}, 3, {0, 1, 0, 37, 0, 100}},
    {"SetLEDConfig", {61, 0, 1, 0, 42, 0, 120}, 1, {10, 10}},
    {"GetLEDConfig", {60}, 3, {0, 1, 0, 42, 0, 120}},
    /* Four channels that are dark; then rise 1000, high 500, fall 1000, low 500, no repetition. */
    {"GetLEDPulses, idle", {52, 0}, 9, {0, 0, 0, 0, 0, 0, 0, 0, 3, 0xE8, 1, 0xF4, 3, 0xE8, 1, 0xF4, 0, 0}},
    {"GetLEDPulses, flash on clash", {52, 1}, 9, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 40, 0, 0, 0, 40, 0, 3}},
    {"StartPulse", {54, 1}, 1, {10, 10}},
    {"a code that there is not", {99}, 0, {0}},
    {"Reset", {0}, 0, {0}},
    {"Bye", {7}, 0, {0}},
    {"GetID, still there", {3}, 1, {0x10, 0x25}},
};

/* How many bytes a report has on top of its elements. Reports to the kernel always have one. */
static int input_id_size;

/* 1: an answer, 0: none in that time, -1: something that is no answer. */
static int read_answer(int board, unsigned char answer[ANSWER], int milliseconds) {
  unsigned char report[64];
  struct pollfd waiting = {board, POLLIN, 0};
  if (poll(&waiting, 1, milliseconds) < 1) return 0;
  if (read(board, report, sizeof report) != input_id_size + ANSWER) return -1;
  if (input_id_size != 0 && report[0] != INPUT_ID) return -1;
  memcpy(answer, report + input_id_size, ANSWER);
  return 1;
}

/* Whether all is as it is to be. */
static int ask(int board, const struct exchange* exchange) {
  unsigned char report[1 + ELEMENTS] = {0};
  unsigned char answer[ANSWER];
  int right = 1;
  int number;
  report[0] = input_id_size != 0 ? OUTPUT_ID : 0;
  memcpy(report + 1, exchange->command, ARGUMENTS);
  printf("%s:", exchange->name);
  if (write(board, report, sizeof report) != (ssize_t)sizeof report) {
    printf(" not written");
    right = 0;
  }
  for (number = 0; right && number < exchange->answers; ++number) {
    if (read_answer(board, answer, PATIENCE) != 1) {
      printf(" no answer");
      right = 0;
    } else {
      printf(" %02X %02X", answer[0], answer[1]);
      if (memcmp(answer, exchange->expected + number * ANSWER, ANSWER) != 0) right = 0;
    }
  }
  printf("%s\n", right ? "" : "  WRONG");
  return right;
}

int main(int count, char** arguments) {
  unsigned char surplus[ANSWER];
  unsigned number;
  int wrong = 0;
  int board;
  if (count < 2) return 99;
  board = open(arguments[1], O_RDWR);
  if (board < 0) {
    perror(arguments[1]);
    return 99;
  }
  input_id_size = count > 2 ? 1 : 0;
  for (number = 0; number < sizeof exchanges / sizeof exchanges[0]; ++number)
    if (!ask(board, &exchanges[number])) ++wrong;
  /* Boards answer in order, so an answer too many would have been taken for the next one's, but for the last. */
  if (read_answer(board, surplus, 100) != 0) {
    printf("there is an answer too many\n");
    ++wrong;
  }
  close(board);
  return wrong;
}
