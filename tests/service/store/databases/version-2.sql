-- A database as version 2 of its tables was written by the service of then: two users, what they wrote, and a key.
-- SPDX-FileCopyrightText: 2026 The TideLoft developers
-- SPDX-License-Identifier: MIT
PRAGMA foreign_keys=OFF;
BEGIN TRANSACTION;
CREATE TABLE users (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, password TEXT NOT NULL, bio TEXT NOT NULL DEFAULT '', created_at INTEGER NOT NULL);
INSERT INTO users VALUES(1,'alice','scrypt$32768$8$3$lvrvmM2fGhc7uUGIPUollw==$aqvqv90GUyNEY3TIdENIg/lRikeB3y6j3wLOrwJd1w4=','I sail.',1795351257248);
INSERT INTO users VALUES(2,'bob','scrypt$32768$8$3$zUaSu/ZA0pIxyl9rGcKT/w==$Zjk/nhB7Oc7cNUnSs4ys59IuiJ94+yn/3n5kx+L8RJo=','',1795351257701);
CREATE TABLE sessions (token_hash BLOB PRIMARY KEY, user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, expires_at INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO sessions VALUES(X'4d030f68b673655cf9b1525243d3087c2ebc5d6fff5d169199b51a11856278ab',2,1797943257957);
INSERT INTO sessions VALUES(X'cd46bcfbfdced88d7663144b9b4e1ac723c3ead54bb360b728c05e9022cd0dd1',1,1797943257470);
CREATE TABLE device_keys (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, device_id TEXT NOT NULL, device_name TEXT NOT NULL, public_key TEXT NOT NULL, updated_at INTEGER NOT NULL, PRIMARY KEY (user_id, device_id)) WITHOUT ROWID;
INSERT INTO device_keys VALUES(1,'d1','Desk','MIIBIjANBgkqhkiG9w0BAQEFAAOCAQ8AMIIBCgKCAQEAuzqmlI+yZoaB19a4WKbC3jnYQMfc6FpWVreTqhfuonj9cAPK8mXnvssWIi8bgvyTA8+WLcTnq00JKvzlYL6gI5Y0rioO6vtUBlfWlwOItM+Dn9CD3m2oTbLrjwGO2MW3/WmIB5T5/FeV1bxLc6pjBkf8/uFVKfrBFWSAWJTcp59ktQohVu6X8ZRD1ad+QqvUuMOSfjkFliT60rDxZT1cVIaa8TOvmRja9pk5GQlSeXxbKVRr3TynpxvUYvOPm+Q4Hr3GfxH8Fljdri5feOCLr1CUycgOugxsrfPWMMM6ZdiJ7G8ud0bNAokpQAkX1HgX/RA0VNt8LueIYo3y5FAOywIDAQAB',1795351258139);
CREATE TABLE messages (id INTEGER PRIMARY KEY AUTOINCREMENT, sender_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, recipient_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, text TEXT NOT NULL, iv TEXT NOT NULL, recipient_keys TEXT NOT NULL, sender_keys TEXT NOT NULL, encrypted INTEGER NOT NULL, created_at INTEGER NOT NULL);
INSERT INTO messages VALUES(1,1,2,'Y2lwaGVydGV4dCAxIGFuZCB0YWcuLi4uLi4=','bm9uY2Utbm9uY2Ux','[{"deviceId":"d9","encryptedKey":"AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4OTo7PD0+P0BBQkNERUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmqq6ytrq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w=="}]','[]',1,1795351258142);
INSERT INTO messages VALUES(2,1,2,'Y2lwaGVydGV4dCAxIGFuZCB0YWcuLi4uLi4=','bm9uY2Utbm9uY2Ux','[{"deviceId":"d9","encryptedKey":"AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKissLS4vMDEyMzQ1Njc4OTo7PD0+P0BBQkNERUZHSElKS0xNTk9QUVJTVFVWV1hZWltcXV5fYGFiY2RlZmdoaWprbG1ub3BxcnN0dXZ3eHl6e3x9fn+AgYKDhIWGh4iJiouMjY6PkJGSk5SVlpeYmZqbnJ2en6ChoqOkpaanqKmqq6ytrq+wsbKztLW2t7i5uru8vb6/wMHCw8TFxsfIycrLzM3Oz9DR0tPU1dbX2Nna29zd3t/g4eLj5OXm5+jp6uvs7e7v8PHy8/T19vf4+fr7/P3+/w=="}]','[]',1,1795351258144);
INSERT INTO messages VALUES(3,2,1,'it''s me 👋','','[]','[]',0,1795351258145);
INSERT INTO messages VALUES(4,2,2,'a note to myself','','[]','[]',0,1795351258146);
CREATE TABLE conversations (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, peer_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, last_message_id INTEGER NOT NULL REFERENCES messages ON DELETE CASCADE, PRIMARY KEY (user_id, peer_id)) WITHOUT ROWID;
INSERT INTO conversations VALUES(1,2,3);
INSERT INTO conversations VALUES(2,1,3);
INSERT INTO conversations VALUES(2,2,4);
CREATE TABLE chat_groups (id INTEGER PRIMARY KEY AUTOINCREMENT, public_id TEXT NOT NULL UNIQUE, name TEXT NOT NULL, description TEXT NOT NULL, created_at INTEGER NOT NULL);
INSERT INTO chat_groups VALUES(1,'156d4527d01dd8df0b75967eee63ebb0','Chess','On Sundays',1795351258148);
CREATE TABLE group_members (user_id INTEGER NOT NULL REFERENCES users ON DELETE CASCADE, group_id INTEGER NOT NULL REFERENCES chat_groups ON DELETE CASCADE, PRIMARY KEY (user_id, group_id)) WITHOUT ROWID;
INSERT INTO group_members VALUES(1,1);
CREATE TABLE pictures (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, user_id INTEGER UNIQUE REFERENCES users ON DELETE CASCADE, group_id INTEGER UNIQUE REFERENCES chat_groups ON DELETE CASCADE, content_type TEXT NOT NULL, content BLOB NOT NULL, CHECK ((user_id IS NULL) <> (group_id IS NULL)));
INSERT INTO pictures VALUES(1,'74dbe60802db3d01a8865ad584264ecb53ca8d76',NULL,1,'image/gif',X'47494638396120616e6420736f206f6e');
INSERT INTO pictures VALUES(2,'6d7a9f15e5effd2edee8a0d0fadfe9539385346a',1,NULL,'image/gif',X'47494638396120616e6420736f206f6e');
DELETE FROM sqlite_sequence;
INSERT INTO sqlite_sequence VALUES('messages',4);
INSERT INTO sqlite_sequence VALUES('chat_groups',1);
CREATE INDEX sessions_by_expiry ON sessions (expires_at);
CREATE INDEX messages_by_pair ON messages (sender_id, recipient_id, id);
CREATE INDEX messages_by_recipient ON messages (recipient_id);
CREATE INDEX group_members_by_group ON group_members (group_id);
COMMIT;
PRAGMA user_version = 2;
